#include "words/words.h"

std::string counted(size_t count, const std::string &nouns) {
    if (count != 1)
        return std::to_string(count) + " " + nouns;
    bool entries = nouns.size() > 3 && nouns.compare(nouns.size() - 3, 3, "ies") == 0;
    return "1 " + (entries ? nouns.substr(0, nouns.size() - 3) + "y" : nouns.substr(0, nouns.size() - 1));
}

std::string joined(const std::vector<std::string> &words, const std::string &between) {
    std::string text;
    for (const std::string &word : words)
        text.append(&word == &words.front() ? "" : between).append(word);
    return text;
}
