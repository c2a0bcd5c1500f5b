// What the program puts out: tables for people, one JSON document for programs.
#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include <string>
#include <string_view>
#include <vector>

namespace tollwick::ctl {

using Row = std::vector<std::string>; // UTF-8

class Output {
public:
    explicit Output(bool is_json) : is_json_(is_json) {}

    [[nodiscard]] bool isJson() const { return is_json_; }

    // Rows in columns that are as wide as their widest text, below a heading unless that is empty.
    void table(const Row& heading, const std::vector<Row>& rows);
    // {"key": value}
    void document(const QString& key, const QJsonValue& value);
    // The same on a line of its own, for documents that follow each other.
    void documentLine(const QString& key, const QJsonValue& value);
    // A line of its own, at once.
    void line(std::string_view text);
    // Text as it is.
    void raw(std::string_view text);

    void flush();
    // Writes out what has been put out; false when any of it could not be written.
    [[nodiscard]] bool finish();

private:
    bool is_json_;
};

// Columns that the text takes on a terminal.
std::size_t displayWidth(std::string_view utf8);

} // namespace tollwick::ctl
