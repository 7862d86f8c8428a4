#include "tools/mediactl/output.h"

#include <cstdint>
#include <cstdlib>
#include <ctime>

#include "tools/mediactl/record_json.h"

namespace mediactl {

namespace {

constexpr int kKeyWidth = 24;

Format format = Format::kColumns;

std::string jsonText(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// Bytes from the database may be anything: what a terminal would act on is not shown.
std::string printable(std::string text) {
    for (char& character : text) {
        if (character < ' ' || character > '~') {
            character = '?';
        }
    }
    return text;
}

std::string dateText(uint32_t seconds) {
    const auto time = static_cast<time_t>(seconds);
    tm utc = {};
    char text[32] = "";
    if (gmtime_r(&time, &utc)) {
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &utc);
    }
    return text;
}

// A value as people read it; the key says what kind of number it is.
std::string cellText(const std::string& key, const Json& value) {
    if (key == "created" || key == "modified") {
        return dateText(value);
    }
    if (key == "content_type") {
        return contentTypeText(value);
    }
    if (value.is_null()) {
        return "-";
    }
    if (value.is_boolean()) {
        return value ? "yes" : "no";
    }
    if (value.is_string()) {
        return printable(value);
    }
    if (!value.is_array()) {
        return jsonText(value);
    }
    std::string list;
    for (const auto& element : value) {
        list += (list.empty() ? "" : " ") + cellText("", element);
    }
    return list.empty() ? "-" : list;
}

void printMembers(const Json& object, int indent) {
    for (const auto& [key, value] : object.items()) {
        if (value.is_object()) {
            std::printf("%*s%s\n", indent, "", key.c_str());
            printMembers(value, indent + 2);
        } else {
            std::printf("%*s%-*s %s\n", indent, "", kKeyWidth - indent, key.c_str(),
                        cellText(key, value).c_str());
        }
    }
}

template <typename CellOf>
void printCells(const std::vector<Column>& columns, CellOf cellOf) {
    const char* separator = "";
    for (const auto& column : columns) {
        std::printf("%s%*s", separator, column.width, cellOf(column).c_str());
        separator = " ";
    }
    std::printf("\n");
}

}  // namespace

void chooseFormat(Format chosen) {
    format = chosen;
}

bool printsJson() {
    return format == Format::kJson;
}

void printResult(const Json& result) {
    if (printsJson()) {
        std::printf("%s\n", jsonText(result).c_str());
    } else {
        printMembers(result, 0);
    }
}

Listing::Listing(const char* name, std::initializer_list<Column> columns)
    : mName(name), mColumns(columns) {}

void Listing::begin() {
    if (mBegun) {
        return;
    }
    mBegun = true;
    if (printsJson()) {
        std::printf("{\"%s\":[", mName);
    } else {
        printCells(mColumns, [](const Column& column) { return std::string(column.title); });
    }
}

void Listing::add(const Json& row) {
    begin();
    if (printsJson()) {
        std::printf("%s\n%s", mEmpty ? "" : ",", jsonText(row).c_str());
    } else {
        printCells(mColumns,
                   [&](const Column& column) { return cellText(column.key, row.at(column.key)); });
    }
    mEmpty = false;
}

void Listing::addNote(const std::string& text) {
    if (!printsJson()) {
        std::printf("  %s\n", printable(text).c_str());
    }
}

void Listing::end(const Json& summary) {
    begin();
    if (!printsJson()) {
        return;
    }
    std::printf("]");
    for (const auto& [key, value] : summary.items()) {
        std::printf(",\n\"%s\":%s", key.c_str(), jsonText(value).c_str());
    }
    std::printf("}\n");
}

}  // namespace mediactl
