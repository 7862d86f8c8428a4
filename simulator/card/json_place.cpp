#include "simulator/card/json_place.h"

#include <algorithm>
#include <cctype>

#include "simulator/card/input_error.h"

namespace simulator {

namespace {

bool isPlainName(const std::string& name) {
    return std::ranges::all_of(name, [](unsigned char c) { return std::isalnum(c) || c == '_'; });
}

}  // namespace

nlohmann::json readJson(std::istream& file, const std::string& path) {
    try {
        return nlohmann::json::parse(file);
    } catch (const nlohmann::json::exception& error) {
        // The text starts with the library's own name of the error, in brackets.
        const std::string_view text = error.what();
        throw InputError(path + ": " + std::string(text.substr(text.find(' ') + 1)));
    }
}

uint32_t JsonPlace::number(uint32_t max) const {
    if (!mValue->is_number_unsigned() || mValue->get<uint64_t>() > max) {
        fail("must be a whole number from 0 to " + std::to_string(max));
    }
    return mValue->get<uint32_t>();
}

bool JsonPlace::boolean() const {
    if (!mValue->is_boolean()) {
        fail("must be true or false");
    }
    return mValue->get<bool>();
}

const std::string& JsonPlace::text() const {
    if (!mValue->is_string()) {
        fail("must be a text");
    }
    return mValue->get_ref<const std::string&>();
}

std::vector<JsonPlace> JsonPlace::elements() const {
    if (!mValue->is_array()) {
        fail("must be a list");
    }
    std::vector<JsonPlace> places;
    for (const auto& element : *mValue) {
        const std::string index = std::to_string(places.size());
        places.push_back({element, mDocument, mPlace + "[" + index + "]"});
    }
    return places;
}

JsonPlace JsonPlace::memberAt(const std::string& name, const nlohmann::json& value) const {
    const std::string member =
        isPlainName(name) ? (mPlace.empty() ? "" : ".") + name : "[\"" + name + "\"]";
    return {value, mDocument, mPlace + member};
}

std::optional<JsonPlace> JsonPlace::member(const std::string& name) const {
    if (!mValue->is_object()) {
        fail("must be an object");
    }
    const auto found = mValue->find(name);
    return found == mValue->end() ? std::nullopt : std::optional(memberAt(name, *found));
}

void JsonPlace::forMembers(
    const std::function<void(const std::string& name, const JsonPlace& value)>& use) const {
    if (!mValue->is_object()) {
        fail("must be an object");
    }
    for (const auto& [name, value] : mValue->items()) {
        use(name, memberAt(name, value));
    }
}

void JsonPlace::fail(const std::string& reason) const {
    throw InputError(mDocument + ": " + (mPlace.empty() ? "" : mPlace + ": ") + reason);
}

}  // namespace simulator
