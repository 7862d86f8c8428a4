// Results on standard output: columns for people, one JSON document for scripts.
#pragma once

#include <cstdio>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace mediactl {

using Json = nlohmann::ordered_json;

enum class Format { kColumns, kJson };

// Chooses the form of all results to come.
void chooseFormat(Format format);

// Whether results are JSON.
[[nodiscard]] bool printsJson();

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

    // row: an object. Members that have no column stand in the JSON document alone.
    void add(const Json& row);

    // Prints a line below the latest row; not for the JSON document.
    void addNote(const std::string& text);

    // Ends the listing. summary: an object whose members follow the rows in the JSON document.
    void end(const Json& summary);

  private:
    void begin();

    const char* mName;
    std::vector<Column> mColumns;
    bool mBegun = false;
    bool mEmpty = true;
};

}  // namespace mediactl
