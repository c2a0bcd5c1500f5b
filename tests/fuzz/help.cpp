// Help files of any bytes, and texts of any number.
#include "base/help_book.h"
#include "base/string_table.h"
#include "base/utf8.h"
#include "tests/fuzz/fuzz.h"

namespace tollwick {

constexpr auto sortKey = [](const HelpKeyword& entry) { return collationKey(entry.keyword); };

std::size_t countEntries(const HelpBook& book, const std::vector<HelpEntry>& entries,
                         std::size_t depth = 1) {
    std::size_t count = entries.size();
    for (const HelpEntry& entry : entries) {
        check(depth <= HelpBook::kMaxDepth && !entry.title.empty());
        check(entry.topic.empty() || book.topic(entry.topic));
        count += countEntries(book, entry.children, depth + 1);
    }
    return count;
}

void fuzz(Input& input) {
    const StringTable texts(input.number<Integer>());
    const int offset = input.number<int>() >> input.number() % 32;
    const std::string words = input.text();
    const std::string contents = input.text();
    const HelpBook book = HelpBook::parse(input.rest, contents);
    check(countEntries(book, book.contents()) <= HelpBook::kMaxEntries &&
          !book.firstTopic() == book.topics().empty());
    for (const HelpTopic& topic : book.topics()) {
        check(book.topic(topic.id) == &topic && topic.keywords.size() <= HelpBook::kMaxKeywords);
        for (const std::string& keyword : topic.keywords) {
            const auto entry = std::ranges::find(book.index(), collationKey(keyword), sortKey);
            check(entry != book.index().end() && std::ranges::count(entry->topics, topic.id) == 1);
        }
        check(std::ranges::count(book.search(topic.title), &topic) ==
              (topic.title.find_first_not_of(" \t\r\n") != std::string::npos));
    }
    check(std::ranges::is_sorted(book.index(), std::ranges::less_equal(), sortKey));
    check(book.topicOfMessage(words).empty() || book.topic(book.topicOfMessage(words)));
    check(isValidUtf8(texts.byOffset(offset)));
}

} // namespace tollwick
