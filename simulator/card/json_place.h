// A value of a JSON document together with its place, so that what is wrong can be said.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

// Reads the JSON document in a file. Throws InputError where there is none.
// path: the name that the error begins with.
[[nodiscard]] nlohmann::json readJson(std::istream& file, const std::string& path);

class JsonPlace {
  public:
    // document: the name that errors begin with. The value must outlive this object.
    JsonPlace(const nlohmann::json& value, std::string document)
        : mValue(&value), mDocument(std::move(document)) {}

    // Each throws InputError where the value is something else.
    [[nodiscard]] uint32_t number(uint32_t max) const;
    [[nodiscard]] bool boolean() const;
    [[nodiscard]] const std::string& text() const;
    [[nodiscard]] std::vector<JsonPlace> elements() const;
    // The object's member of this name; none where it has none.
    [[nodiscard]] std::optional<JsonPlace> member(const std::string& name) const;
    // Calls use for every member of an object.
    void forMembers(
        const std::function<void(const std::string& name, const JsonPlace& value)>& use) const;

    // Throws InputError: document, place, reason.
    [[noreturn]] void fail(const std::string& reason) const;

  private:
    JsonPlace(const nlohmann::json& value, std::string document, std::string place)
        : mValue(&value), mDocument(std::move(document)), mPlace(std::move(place)) {}

    [[nodiscard]] JsonPlace memberAt(const std::string& name, const nlohmann::json& value) const;

    const nlohmann::json* mValue;
    std::string mDocument;
    std::string mPlace;  // such as files["100VXCAM/VXMF0001.MP4"].highlights[2]
};

}  // namespace simulator
