#include "tools/mediactl/output.h"

#include "tools/mediactl/progress.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <utility>

namespace mediactl {

namespace {

constexpr int kKeyWidth = 24;

Format format = Format::kColumns;

Listing* openListing = nullptr;
int console = -1;  // standard output while a producer prints into a file

// Returns false when standard output could not be put back.
bool giveBackOutput() {
    if (console < 0) {
        return true;
    }
    std::fflush(stdout);
    const bool back = dup2(console, STDOUT_FILENO) >= 0;
    close(std::exchange(console, -1));
    return back;
}

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

std::string sizeText(uint64_t bytes) {
    constexpr uint64_t kMany = 10240;
    const char* const units[] = {"B", "KiB", "MiB", "GiB", "TiB"};
    size_t unit = 0;
    for (; bytes >= kMany && unit + 1 < std::size(units); ++unit) {
        bytes = (bytes + 512) / 1024;
    }
    return std::to_string(bytes) + " " + units[unit];
}

std::string lengthText(uint32_t seconds) {
    char text[24];
    if (const uint32_t hours = seconds / 3600) {
        std::snprintf(text, sizeof text, "%u:%02u:%02u", hours, seconds / 60 % 60, seconds % 60);
    } else {
        std::snprintf(text, sizeof text, "%u:%02u", seconds / 60, seconds % 60);
    }
    return text;
}

// A value as people read it; the key says what kind of number it is.
std::string cellText(const std::string& key, const Json& value) {
    if (key == "created" || key == "modified") {
        return dateText(value);
    }
    if (key == "size_bytes") {
        return sizeText(value);
    }
    if (key == "duration_s") {
        return lengthText(value);
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

std::string csvText(const std::string& key, const Json& value) {
    std::string text;
    if (value.is_array()) {
        for (const auto& element : value) {
            text += (text.empty() ? "" : " ") + csvText("", element);
        }
    } else if (value.is_string() || key == "created" || key == "modified") {
        text = cellText(key, value);
    } else if (!value.is_null()) {
        text = jsonText(value);
    }
    if (text.find_first_of(",\"") == std::string::npos) {
        return text;
    }
    for (size_t i = 0; (i = text.find('"', i)) != std::string::npos; i += 2) {
        text.insert(i, 1, '"');
    }
    return '"' + text + '"';
}

// A line of a value for each member of an object; textOf: called with key and value.
template <typename TextOf>
void printCsv(const Json& object, TextOf textOf) {
    const char* separator = "";
    for (const auto& [key, value] : object.items()) {
        std::printf("%s%s", separator, textOf(key, value).c_str());
        separator = ",";
    }
    std::printf("\n");
}

void printCsvMembers(const Json& object, const std::string& above) {
    for (const auto& [key, value] : object.items()) {
        if (value.is_object()) {
            printCsvMembers(value, above + key + ".");
        } else {
            std::printf("%s%s,%s\n", above.c_str(), key.c_str(), csvText(key, value).c_str());
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
    } else if (format == Format::kCsv) {
        std::printf("member,value\n");
        printCsvMembers(result, "");
    } else {
        printMembers(result, 0);
    }
}

std::optional<std::string> printedBy(const std::function<int()>& producer) {
    std::fflush(stdout);
    console = dup(STDOUT_FILENO);
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::tmpfile(), std::fclose);
    const bool taken = file && console >= 0 && dup2(fileno(file.get()), STDOUT_FILENO) >= 0;
    if (taken) {
        (void)producer();
    }
    if (!giveBackOutput() || !taken) {
        return std::nullopt;
    }

    std::string text;
    char part[4096];
    std::rewind(file.get());
    while (const size_t size = std::fread(part, 1, sizeof part, file.get())) {
        text.append(part, size);
    }
    return text;
}

void endWithError(const Json& error) {
    (void)giveBackOutput();
    if (openListing) {
        openListing->close(false, {{"error", error}});
    } else if (printsJson()) {
        printResult({{"error", error}});
    }
    std::fflush(stdout);
}

Listing::Listing(const char* name, std::initializer_list<Column> columns)
    : mName(name), mColumns(columns) {}

Listing::~Listing() {
    if (openListing == this) {
        openListing = nullptr;
    }
}

void Listing::begin(const Json& row) {
    if (mBegun) {
        return;
    }
    mBegun = true;
    openListing = this;
    hideProgress();
    if (printsJson()) {
        std::printf("{\"%s\":[", mName);
    } else if (format == Format::kCsv) {
        printCsv(row, [](const std::string& key, const Json&) { return key; });
    } else {
        printCells(mColumns, [](const Column& column) { return std::string(column.title); });
    }
}

void Listing::add(const Json& row) {
    begin(row);
    if (printsJson()) {
        std::printf("%s\n%s", mEmpty ? "" : ",", jsonText(row).c_str());
    } else if (format == Format::kCsv) {
        printCsv(row, csvText);
    } else {
        printCells(mColumns,
                   [&](const Column& column) { return cellText(column.key, row.at(column.key)); });
    }
    mEmpty = false;
}

void Listing::addNote(const std::string& text) {
    if (format == Format::kColumns) {
        std::printf("  %s\n", printable(text).c_str());
    }
}

void Listing::end(const Json& summary) {
    Json titles = Json::object();
    for (const Column& column : mColumns) {
        titles[column.key] = nullptr;
    }
    begin(titles);
    close(true, summary);
}

void Listing::close(bool complete, const Json& members) {
    openListing = nullptr;
    if (!printsJson()) {
        std::fputs(complete || format == Format::kCsv ? "" : "(the list is cut here)\n", stdout);
        return;
    }
    std::printf("],\n\"complete\":%s", complete ? "true" : "false");
    for (const auto& [key, value] : members.items()) {
        std::printf(",\n\"%s\":%s", key.c_str(), jsonText(value).c_str());
    }
    std::printf("}\n");
}

}  // namespace mediactl
