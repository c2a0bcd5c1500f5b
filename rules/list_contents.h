// What the list shows for each node: columns, rows, icons and formats.
#pragma once

#include "base/clock.h"
#include "base/string_table.h"
#include "rules/service_data.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tollwick {

struct ListColumn {
    std::string title;
    int width = 0; // twips; 0 where it follows the contents
    bool is_number = false;
};

// The key of rows that show no single setting.
inline constexpr std::string_view kPlainRowKey = "setting";

struct ListRow {
    std::string key;
    std::string_view image;
    std::vector<std::string> cells;
    std::string identity; // tells the row apart from the others of its list
};

// The rows of one list. Long lists are formatted row by row, or cell by cell, as they are asked
// for.
struct ListContents {
    std::vector<ListColumn> columns;
    std::size_t row_count = 0;
    std::function<ListRow(std::size_t row)> row;
    std::function<std::string(std::size_t row, std::size_t column)> cell;
    // What a cell is sorted by instead of its text: an amount, a time, a place in the week.
    std::function<std::optional<double>(std::size_t row, std::size_t column)> value;
};

// What the data does not say of a session.
struct Surroundings {
    std::string host; // of the service, UTF-8
    std::string port;
    LocalTime now;
};

// The contents for a node. They refer to `data`, which must outlive them; rows of hosts, schedules
// and mails follow it as it changes, others stay as they are. `around` is asked by the nodes that
// group others.
ListContents listContents(std::string_view node_key, const ServiceData& data,
                          const StringTable& texts, const Surroundings& around = {});

// The second column of the monitor's seven rows, in their order.
inline constexpr std::size_t kMonitorRows = 7;
std::array<std::string, kMonitorRows> monitorTexts(const UucpStatusRecord& status);

} // namespace tollwick
