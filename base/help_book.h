// The help as its two files hold it: topics written in Markdown and an outline of them, with the
// index and the search that follow from the topics.
//
// The topics stand one after the other, each under lines of its own:
//
//     @topic login
//     @title Logging in
//     @keywords login, password, user
//     ...Markdown...
//
// The outline has one entry a line, "Title" or "Title = topic", and an entry belongs to the closest
// one above it that is indented less. Both files are UTF-8.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tollwick {

struct HelpTopic {
    std::string id;
    std::string title; // the id when none is given
    std::vector<std::string> keywords;
    std::string text; // Markdown
};

struct HelpEntry {
    std::string title;
    std::string topic; // id of a topic that exists; empty for a heading
    std::vector<HelpEntry> children;
};

struct HelpKeyword {
    std::string keyword;
    std::vector<std::string> topics; // ids, in the order of the file
};

class HelpBook {
public:
    // In bytes; what follows in a larger file is left out.
    static constexpr std::size_t kMaxFileSize = 4 * 1024 * 1024;
    // What goes beyond these is left out, too; entries that are nested deeper rise to the last
    // level.
    static constexpr std::size_t kMaxTopics = 4000;
    static constexpr std::size_t kMaxKeywords = 100; // of one topic
    static constexpr std::size_t kMaxEntries = 4000;
    static constexpr std::size_t kMaxDepth = 8;

    HelpBook() = default;

    // Takes any bytes and makes of them what it can. Of two topics with one id the first counts.
    // Without a usable outline the contents list all topics.
    static HelpBook parse(std::string_view topics, std::string_view contents);

    // Nullptr when there is no such topic.
    [[nodiscard]] const HelpTopic* topic(std::string_view id) const;
    // The id of the topic that explains a message: one whose id begins with "messages" and that has
    // a heading of the third level with which the message begins, the longest if there are several.
    // Empty when there is none.
    [[nodiscard]] std::string topicOfMessage(std::string_view message) const;
    // The first topic of the contents; nullptr in an empty book.
    [[nodiscard]] const HelpTopic* firstTopic() const;

    [[nodiscard]] const std::vector<HelpTopic>& topics() const { return topics_; }
    [[nodiscard]] const std::vector<HelpEntry>& contents() const { return contents_; }
    // Sorted without regard to case, with å, ä and ö at the end of the alphabet. Keywords that
    // differ only in case are one.
    [[nodiscard]] const std::vector<HelpKeyword>& index() const { return index_; }

    // The topics in which all the words occur, also as parts of words, without regard to case.
    // Words in a title count most, then those in the keywords. The pointers last as long as the
    // book.
    [[nodiscard]] std::vector<const HelpTopic*> search(std::string_view words) const;

private:
    // A topic in small letters.
    struct Searchable {
        std::string title;
        std::string keywords;
        std::string text;
    };

    void readTopics(std::string_view file);
    void readContents(std::string_view file);
    void makeIndex();
    void makeSearchable();

    std::vector<HelpTopic> topics_;
    std::map<std::string, std::size_t, std::less<>> by_id_;
    std::vector<HelpEntry> contents_;
    std::vector<HelpKeyword> index_;
    std::vector<Searchable> searchable_; // one for each topic
};

} // namespace tollwick
