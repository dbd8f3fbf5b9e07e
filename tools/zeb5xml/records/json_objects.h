#ifndef ZEB5XML_JSON_OBJECTS_H
#define ZEB5XML_JSON_OBJECTS_H

#include <functional>
#include <string>

#include <nlohmann/json_fwd.hpp>

#include "files/document.h"

/// Calls `take(object, where)` for each JSON object of the source: objects one behind the other, or one array
/// of them. Only one is held at a time. `where` names the object in messages: "in.jsonl:3: record 2", by the
/// line in which it begins. Throws failure for anything else, with the line: what is no JSON, and a key that
/// stands twice in an object.
void each_json_object(
    const document &source,
    const std::function<void(const nlohmann::json &object, const std::string &where)> &take);

#endif
