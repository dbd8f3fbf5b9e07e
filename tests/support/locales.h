#ifndef LOCALES_H
#define LOCALES_H

/// Locales for tests. A bare machine has "C" and "C.UTF-8" alone; others are made where it has their sources.

#include <clocale>
#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/test_files.h"

/// The process's locale while this lives, named like "de_DE.ISO-8859-1": language and character set.
class locale_in_use {
public:
    explicit locale_in_use(const std::string &name) : before_(setlocale(LC_ALL, nullptr)) {
        is_set_ = setlocale(LC_ALL, name.c_str()) || (make(name) && setlocale(LC_ALL, name.c_str()));
    }
    ~locale_in_use() {
        setlocale(LC_ALL, before_.c_str());
        if (folder_)
            unsetenv("LOCPATH");
    }
    locale_in_use(const locale_in_use &) = delete;
    locale_in_use &operator=(const locale_in_use &) = delete;

    /// False where neither the locale nor what it is made of is there: nothing to test in then.
    bool is_set() const { return is_set_; }

private:
    bool make(const std::string &name) {
        const std::size_t dot = name.find('.');
        if (dot == std::string::npos || getenv("LOCPATH"))
            return false;
        folder_.emplace();
        setenv("LOCPATH", folder_->c_path(), 1);
        const std::string command = "localedef -i " + name.substr(0, dot) + " -f " + name.substr(dot + 1) +
                                    ' ' + *folder_ / name + " >" + *folder_ / "messages 2>&1";
        return system(command.c_str()) == 0;
    }

    std::string before_;
    std::optional<temporary_folder> folder_; // where it was made
    bool is_set_ = false;
};

/// One of each kind: the two of every machine, one of 8 bits, and one with a decimal comma.
inline constexpr const char *locales[] = {"C", "C.UTF-8", "en_US.ISO-8859-1", "de_DE.ISO-8859-1"};

/// The base of tests that run in each of them. It comes before what follows the locale, like the XML
/// platform's transcoder.
class InEachLocale : public testing::TestWithParam<const char *> {
protected:
    void SetUp() override {
        if (!locale_.is_set())
            GTEST_SKIP() << "no locale " << GetParam() << " and nothing to make it of";
    }

private:
    locale_in_use locale_{GetParam()};
};

/// The locale in the name of such a test.
inline std::string locale_in_name(const testing::TestParamInfo<const char *> &row) {
    std::string name = row.param;
    for (char &c : name)
        if (c == '.' || c == '-')
            c = '_';
    return name;
}

#endif
