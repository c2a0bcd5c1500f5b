#include "base/help_book.h"

#include "base/text.h"
#include "base/utf8.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tollwick {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kTabWidth = 4;
// Bytes of a link address that is left out of what is searched.
constexpr std::size_t kMaxLinkSize = 200;
constexpr std::size_t kMaxSearchWords = 32;

std::string_view start(std::string_view file) {
    if (file.starts_with(kByteOrderMark))
        file.remove_prefix(kByteOrderMark.size());
    return file.substr(0, HelpBook::kMaxFileSize);
}

// Removes the first line from `text` and returns it without its line end.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// What follows `name` on a line that begins with it.
std::optional<std::string_view> valueOf(std::string_view name, std::string_view line) {
    if (!line.starts_with(name))
        return {};
    line.remove_prefix(name.size());
    if (!line.empty() && line[0] != ' ' && line[0] != '\t')
        return {};
    return withoutBlanks(line, kBlanks);
}

std::vector<std::string> keywordsOf(std::string_view list) {
    std::vector<std::string> keywords;
    while (!list.empty() && keywords.size() < HelpBook::kMaxKeywords) {
        const std::size_t comma = list.find(',');
        const std::string_view keyword = withoutBlanks(list.substr(0, comma), kBlanks);
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
        if (!keyword.empty())
            keywords.emplace_back(keyword);
    }
    return keywords;
}

std::size_t indentOf(std::string_view line) {
    std::size_t indent = 0;
    for (const char c : line) {
        if (c != ' ' && c != '\t')
            break;
        indent += c == '\t' ? kTabWidth : 1;
    }
    return indent;
}

// The text as it is read: without the marks of emphasis and the addresses of links.
std::string withoutMarkup(std::string_view markdown) {
    std::string plain;
    plain.reserve(markdown.size());
    for (std::size_t i = 0; i < markdown.size(); ++i) {
        if (markdown.substr(i, 2) == "](") {
            const std::size_t close = markdown.substr(i, kMaxLinkSize).find(')');
            if (close != std::string_view::npos) {
                i += close;
                continue;
            }
        }
        if (markdown[i] != '*' && markdown[i] != '`')
            plain.push_back(markdown[i]);
    }
    return plain;
}

std::vector<std::string> wordsOf(std::string_view text) {
    constexpr std::string_view kSpace = " \t\r\n";
    std::vector<std::string> words;
    while (words.size() < kMaxSearchWords) {
        const std::size_t first = text.find_first_not_of(kSpace);
        if (first == std::string_view::npos)
            break;
        text.remove_prefix(first);
        const std::string_view word = text.substr(0, text.find_first_of(kSpace));
        words.emplace_back(word);
        text.remove_prefix(word.size());
    }
    return words;
}

const HelpEntry* firstWithTopic(const std::vector<HelpEntry>& entries) {
    for (const HelpEntry& entry : entries) {
        if (!entry.topic.empty())
            return &entry;
        if (const HelpEntry* found = firstWithTopic(entry.children))
            return found;
    }
    return nullptr;
}

} // namespace

HelpBook HelpBook::parse(std::string_view topics, std::string_view contents) {
    HelpBook book;
    book.readTopics(start(topics));
    book.readContents(start(contents));
    book.makeIndex();
    book.makeSearchable();
    return book;
}

void HelpBook::readTopics(std::string_view file) {
    // What stands before the first topic, or under one that does not count, is not read.
    bool reading = false;
    bool heading = false;
    while (!file.empty()) {
        const std::string_view line = takeLine(file);
        if (const auto id = valueOf("@topic", line)) {
            reading = !id->empty() && topics_.size() < kMaxTopics &&
                      by_id_.try_emplace(std::string(*id), topics_.size()).second;
            heading = reading;
            if (reading)
                topics_.push_back({std::string(*id), std::string(*id), {}, {}});
            continue;
        }
        if (!reading)
            continue;
        HelpTopic& topic = topics_.back();
        if (heading) {
            if (const auto title = valueOf("@title", line); title && !title->empty())
                topic.title = *title;
            else if (const auto keywords = valueOf("@keywords", line))
                topic.keywords = keywordsOf(*keywords);
            heading = line.starts_with('@') || withoutBlanks(line, kBlanks).empty();
        }
        if (!heading)
            topic.text.append(line).push_back('\n');
    }
}

void HelpBook::readContents(std::string_view file) {
    struct Level {
        std::size_t indent;
        std::vector<HelpEntry>* entries; // where its children go
    };
    std::vector<Level> open; // the last entry and those it lies in
    bool any_topic = false;
    for (std::size_t count = 0; !file.empty() && count < kMaxEntries;) {
        const std::string_view line = takeLine(file);
        const std::size_t equals = line.rfind('=');
        HelpEntry entry{std::string(withoutBlanks(line.substr(0, equals), kBlanks)), {}, {}};
        if (equals != std::string_view::npos)
            if (const HelpTopic* named = topic(withoutBlanks(line.substr(equals + 1), kBlanks)))
                entry.topic = named->id;
        if (entry.title.empty())
            continue;
        any_topic = any_topic || !entry.topic.empty();
        const std::size_t indent = indentOf(line);
        while (!open.empty() && (open.back().indent >= indent || open.size() >= kMaxDepth))
            open.pop_back();
        std::vector<HelpEntry>& siblings = open.empty() ? contents_ : *open.back().entries;
        siblings.push_back(std::move(entry));
        open.push_back({indent, &siblings.back().children});
        ++count;
    }
    if (any_topic)
        return;
    contents_.clear();
    for (const HelpTopic& each : topics_)
        contents_.push_back({each.title, each.id, {}});
}

void HelpBook::makeIndex() {
    std::map<std::string, HelpKeyword> sorted;
    for (const HelpTopic& topic : topics_)
        for (const std::string& keyword : topic.keywords) {
            HelpKeyword& entry = sorted[collationKey(keyword)];
            if (entry.keyword.empty())
                entry.keyword = keyword;
            if (entry.topics.empty() || entry.topics.back() != topic.id)
                entry.topics.push_back(topic.id);
        }
    for (auto& [key, entry] : sorted)
        index_.push_back(std::move(entry));
}

void HelpBook::makeSearchable() {
    for (const HelpTopic& topic : topics_) {
        Searchable searchable;
        searchable.title = toLower(topic.title);
        for (const std::string& keyword : topic.keywords)
            searchable.keywords.append(toLower(keyword)).push_back('\n');
        searchable.text = toLower(withoutMarkup(topic.text));
        searchable_.push_back(std::move(searchable));
    }
}

const HelpTopic* HelpBook::topic(std::string_view id) const {
    const auto found = by_id_.find(id);
    return found == by_id_.end() ? nullptr : &topics_[found->second];
}

std::string HelpBook::topicOfMessage(std::string_view message) const {
    constexpr std::string_view kHeading = "\n### ";
    std::size_t longest = 0;
    std::string found;
    for (const HelpTopic& topic : topics_) {
        if (!topic.id.starts_with("messages"))
            continue;
        const std::string text = '\n' + topic.text;
        for (std::size_t at = text.find(kHeading); at != std::string::npos;
             at = text.find(kHeading, at)) {
            at += kHeading.size();
            const std::string heading = text.substr(at, text.find('\n', at) - at);
            if (heading.size() > longest && message.starts_with(heading)) {
                longest = heading.size();
                found = topic.id;
            }
        }
    }
    return found;
}

const HelpTopic* HelpBook::firstTopic() const {
    const HelpEntry* entry = firstWithTopic(contents_);
    return entry ? topic(entry->topic) : nullptr;
}

std::vector<const HelpTopic*> HelpBook::search(std::string_view words) const {
    const std::vector<std::string> wanted = wordsOf(toLower(words));
    using Rank = std::pair<std::size_t, std::size_t>; // words in the title, words in the keywords
    std::vector<std::pair<Rank, const HelpTopic*>> hits;
    for (std::size_t i = 0; i < topics_.size(); ++i) {
        const Searchable& in = searchable_[i];
        Rank rank;
        const bool all = std::all_of(wanted.begin(), wanted.end(), [&](const std::string& word) {
            const bool in_title = in.title.find(word) != std::string::npos;
            const bool in_keywords = in.keywords.find(word) != std::string::npos;
            rank.first += in_title;
            rank.second += in_keywords;
            return in_title || in_keywords || in.text.find(word) != std::string::npos;
        });
        if (all && !wanted.empty())
            hits.emplace_back(rank, &topics_[i]);
    }
    std::stable_sort(hits.begin(), hits.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<const HelpTopic*> found;
    found.reserve(hits.size());
    for (const auto& [rank, topic] : hits)
        found.push_back(topic);
    return found;
}

} // namespace tollwick
