#include "app/help_book.h"

#include <gtest/gtest.h>

#include <random>

namespace tollwick {
namespace {

constexpr std::string_view kTopics = "\xEF\xBB\xBFnot yet a topic\r\n"
                                     "@topic login\r\n"
                                     "@title Logging in\r\n"
                                     "@keywords password, Öppna , , user\r\n"
                                     "\r\n"
                                     "Type the **pass**word, see [hosts](UUCP).\r\n"
                                     "@title is text here\r\n"
                                     "@topic hosts\n"
                                     "@keywords Ärende, USER, åtkomst, zon\n"
                                     "@unknown heading\n"
                                     "How to log in to ÅÄÖ hosts.\n"
                                     "@topic login\n"
                                     "A second one.\n"
                                     "@topics are not topics\n"
                                     "@topic\n"
                                     "Nameless.";
constexpr std::string_view kContents = "\n"
                                       "Getting started\r\n"
                                       "    Logging in = login\r\n"
                                       "\tMore\n"
                                       "\t  Gone = missing\n"
                                       "  Hosts=hosts\n"
                                       "= login\n"
                                       "Last = hosts";

std::vector<std::string> found(const HelpBook& book, std::string_view words) {
    std::vector<std::string> ids;
    for (const HelpTopic* topic : book.search(words))
        ids.push_back(topic->id);
    return ids;
}

// The outline as one line: "title>topic(children)".
std::string outline(const std::vector<HelpEntry>& entries) {
    std::string text;
    for (const HelpEntry& entry : entries)
        text += entry.title + ">" + entry.topic + "(" + outline(entry.children) + ")";
    return text;
}

TEST(HelpBook, ReadsTopicsAndTheirHeadings) {
    const HelpBook book = HelpBook::parse(kTopics, kContents);
    ASSERT_EQ(book.topics().size(), 2u);
    const HelpTopic* login = book.topic("login");
    ASSERT_NE(login, nullptr);
    EXPECT_EQ(login->title, "Logging in");
    EXPECT_EQ(login->keywords, (std::vector<std::string>{"password", "Öppna", "user"}));
    EXPECT_EQ(login->text, "Type the **pass**word, see [hosts](UUCP).\n@title is text here\n");
    const HelpTopic* hosts = book.topic("hosts");
    ASSERT_NE(hosts, nullptr);
    EXPECT_EQ(hosts->title, "hosts");
    EXPECT_EQ(hosts->text, "How to log in to ÅÄÖ hosts.\n");
    EXPECT_EQ(book.topic("Login"), nullptr);
}

TEST(HelpBook, ContentsNestByIndent) {
    EXPECT_EQ(outline(HelpBook::parse(kTopics, kContents).contents()),
              "Getting started>(Logging in>login()More>(Gone>())Hosts>hosts())Last>hosts()");
    EXPECT_EQ(HelpBook::parse(kTopics, kContents).firstTopic()->id, "login");
    // All topics, when the outline leads to none.
    EXPECT_EQ(outline(HelpBook::parse(kTopics, "Heading\n").contents()),
              "Logging in>login()hosts>hosts()");
}

TEST(HelpBook, IndexIsSortedAndMergedWithoutCase) {
    const HelpBook book = HelpBook::parse(kTopics, kContents);
    std::vector<std::string> keywords;
    for (const HelpKeyword& entry : book.index())
        keywords.push_back(entry.keyword);
    EXPECT_EQ(keywords,
              (std::vector<std::string>{"password", "user", "zon", "åtkomst", "Ärende", "Öppna"}));
    EXPECT_EQ(book.index()[1].topics, (std::vector<std::string>{"login", "hosts"}));
}

TEST(HelpBook, SearchWantsEveryWordAndPutsTitlesFirst) {
    const HelpBook book = HelpBook::parse(kTopics, kContents);
    const std::vector<std::string> none;
    EXPECT_EQ(found(book, "LOG"), (std::vector<std::string>{"login", "hosts"}));
    EXPECT_EQ(found(book, "hosts"), (std::vector<std::string>{"hosts", "login"}));
    EXPECT_EQ(found(book, " log  åäö "), (std::vector<std::string>{"hosts"}));
    EXPECT_EQ(found(book, "ÖPPNA"), (std::vector<std::string>{"login"}));
    EXPECT_EQ(found(book, "log nowhere"), none);
    EXPECT_EQ(found(book, "uucp"), none) << "an address of a link is not read";
    EXPECT_EQ(found(book, " \t"), none);
}

TEST(HelpBook, AnyBytesGiveABoundedBook) {
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

    EXPECT_EQ(HelpBook::parse("", "").firstTopic(), nullptr);
    std::mt19937 random(1);
    constexpr std::string_view kPieces[] = {"@topic ",
                                            "@title ",
                                            "@keywords ",
                                            "\n",
                                            "  ",
                                            "=",
                                            "a",
                                            ",",
                                            "](",
                                            "\xC3",
                                            std::string_view("\0", 1)};
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        for (int i = 0; i < 200; ++i)
            bytes += kPieces[random() % std::size(kPieces)];
        const HelpBook book = HelpBook::parse(bytes, bytes);
        for (const HelpKeyword& entry : book.index())
            for (const std::string& id : entry.topics)
                EXPECT_NE(book.topic(id), nullptr);
        EXPECT_EQ(book.firstTopic() == nullptr, book.topics().empty());
        EXPECT_LE(book.search("a").size(), book.topics().size());
    }
}

} // namespace
} // namespace tollwick
