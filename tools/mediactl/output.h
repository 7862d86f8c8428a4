// Results on standard output: columns for people, one JSON document for scripts, comma-separated
// values for spreadsheets.
#pragma once

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace mediactl {

using Json = nlohmann::ordered_json;

enum class Format { kColumns, kJson, kCsv };

// Chooses the form of all results to come.
void chooseFormat(Format format);

// Whether results are JSON.
[[nodiscard]] bool printsJson();

// Ends the JSON document with an error: the one that a listing has begun, or one of its own. A list
// of columns gets a last line that says that it is cut.
void endWithError(const Json& error);

// Runs a producer and takes what it prints on standard output; nothing when that cannot be taken.
[[nodiscard]] std::optional<std::string> printedBy(const std::function<int()>& producer);

// Prints one result: its members, one a line, or the document.
void printResult(const Json& result);

// One column of a listing and the member of a row that stands in it.
struct Column {
    const char* key;
    const char* title;
    int width;  // negative: flush left
};

// A listing of any length; each row is printed as it comes, and nothing before the first row or the
// end.
class Listing {
  public:
    // name: of the array of rows in the JSON document.
    Listing(const char* name, std::initializer_list<Column> columns);
    ~Listing();
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;

    // row: an object. Members that have no column stand in the JSON document alone.
    void add(const Json& row);

    // Prints a line below the latest row; not for the JSON document.
    void addNote(const std::string& text);

    // Ends the listing. summary: an object whose members follow the rows in the JSON document, and
    // "complete", which is true.
    void end(const Json& summary);

  private:
    friend void endWithError(const Json& error);

    void begin(const Json& row);
    void close(bool complete, const Json& members);

    const char* mName;
    std::vector<Column> mColumns;
    bool mBegun = false;
    bool mEmpty = true;
};

}  // namespace mediactl
