#include "base/help_book.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using Strings = std::vector<std::string>;

// clang-format off
const HelpBook kBook = HelpBook::parse(
    "\xEF\xBB\xBFnot yet a topic\r\n"
    "@topic login\r\n@title Logging in\r\n@keywords password, Öppna , , user\r\n"
    "\r\nType the **pass**word, see [hosts](UUCP).\r\n@title is text here\r\n"
    "@topic hosts\n@keywords Ärende, USER, åtkomst, zon\n@unknown heading\n"
    "How to log in to ÅÄÖ hosts.\n"
    "@topic login\nA second one.\n@topics are not topics\n@topic\nNameless.",
    "\nGetting started\r\n    Logging in = login\r\n\tMore\n\t  Gone = missing\n"
    "  Hosts=hosts\n= login\nLast = hosts");
// clang-format on

// The outline as one line: "title>topic(children)".
std::string outline(const std::vector<HelpEntry>& entries) {
    std::string text;
    for (const HelpEntry& entry : entries)
        text += entry.title + ">" + entry.topic + "(" + outline(entry.children) + ")";
    return text;
}

TEST(HelpBook, ReadsTopicsContentsAndIndex) {
    ASSERT_EQ(kBook.topics().size(), 2u);
    const HelpTopic& login = kBook.topics()[0];
    EXPECT_EQ(login.title, "Logging in");
    EXPECT_EQ(login.keywords, (Strings{"password", "Öppna", "user"}));
    EXPECT_EQ(login.text, "Type the **pass**word, see [hosts](UUCP).\n@title is text here\n");
    EXPECT_EQ(kBook.topics()[1].title, "hosts");
    EXPECT_EQ(kBook.topics()[1].text, "How to log in to ÅÄÖ hosts.\n");
    EXPECT_EQ(outline(kBook.contents()),
              "Getting started>(Logging in>login()More>(Gone>())Hosts>hosts())Last>hosts()");
    EXPECT_EQ(kBook.firstTopic(), &login);
    // All topics, when the outline leads to none.
    EXPECT_EQ(outline(HelpBook::parse("@topic a\n@topic b\n", "Heading\n").contents()),
              "a>a()b>b()");
    Strings keywords; // sorted and merged without case
    for (const HelpKeyword& entry : kBook.index())
        keywords.push_back(entry.keyword);
    EXPECT_EQ(keywords, (Strings{"password", "user", "zon", "åtkomst", "Ärende", "Öppna"}));
    EXPECT_EQ(kBook.index()[1].topics, (Strings{"login", "hosts"}));
}

TEST(HelpBook, SearchWantsEveryWordAndPutsTitlesFirst) {
    const std::pair<const char*, std::string> cases[] = {
        {"LOG", "login hosts "},
        {"hosts", "hosts login "},
        {" log  åäö ", "hosts "},
        {"ÖPPNA", "login "},
        {"log nowhere", ""},
        {" \t", ""},
        {"uucp", ""}}; // an address of a link is not read
    for (const auto& [words, expected] : cases) {
        std::string ids;
        for (const HelpTopic* topic : kBook.search(words))
            ids += topic->id + ' ';
        EXPECT_EQ(ids, expected) << words;
    }
}

TEST(HelpBook, IsBoundedWhateverItIsReadFrom) {
    std::string deep;
    std::string many;
    for (std::size_t i = 0; i < HelpBook::kMaxEntries + 100; ++i) {
        deep += std::string(i % 200, ' ') + "x = a1\n";
        many += "@topic a" + std::to_string(i) + "\n";
    }
    const HelpBook large = HelpBook::parse(many, deep);
    EXPECT_EQ(large.topics().size(), HelpBook::kMaxTopics);
    std::size_t depth = 0;
    for (const auto* level = &large.contents(); !level->empty(); level = &level->back().children)
        ++depth;
    EXPECT_LE(depth, HelpBook::kMaxDepth);
    EXPECT_EQ(HelpBook::parse("@topic \n@title\n\xC3](", "=\n \xC3").firstTopic(), nullptr);
}

} // namespace
} // namespace tollwick
