// Programs of operations on a list, a stack and a dict, each followed by a plain reference. The
// input is a row of operations of two bytes.
#include "fuzz/checked_response.h"
#include "tests/vtl/values.h"

namespace {

using Texts = std::vector<std::string>;

std::string joined(const Texts& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += (all.empty() ? "" : " ") + text;
    }
    return all;
}

std::ptrdiff_t placeIn(const Texts& texts, int index) {
    return std::clamp<std::ptrdiff_t>(index, 0, static_cast<std::ptrdiff_t>(texts.size()));
}

// The first entry of the key, or the end.
Texts::iterator entryOf(Texts& entries, const std::string& key) {
    return std::ranges::find_if(entries, [&](auto& entry) { return entry.starts_with(key + "="); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const WatchedMemory memory;
    {
        Value list(vtl_list_create());
        const Value stack(vtl_stack_create());
        const Value dict(vtl_dict_create());
        Texts listed;
        Texts stacked;
        Texts entries;
        for (; size >= 2; data += 2, size -= 2) {
            const int number = static_cast<int8_t>(data[1]);
            const std::string text = std::to_string(number);
            const std::string key(1, static_cast<char>('a' + (data[1] & 7)));
            vtl_value* popped = nullptr;
            switch (data[0] % 10) {
                case 0:
                    require(vtl_list_insert_int(list, number, 5) == 0);
                    listed.insert(listed.begin() + placeIn(listed, number), "5");
                    break;
                case 1:
                    require(vtl_list_append(list, VTL_TYPE_STRING, text.c_str()) == 0);
                    listed.push_back(text);
                    break;
                case 2: {
                    const int result = vtl_list_remove(list, number);
                    if (result == 0) {
                        require(!listed.empty());
                        const auto last = static_cast<std::ptrdiff_t>(listed.size()) - 1;
                        listed.erase(listed.begin() + std::clamp<std::ptrdiff_t>(number, 0, last));
                    }
                    break;
                }
                case 3: {
                    Value copy(vtl_value_create(VTL_TYPE_ANY, list, nullptr));
                    require(copy != nullptr);
                    list = std::move(copy);
                    break;
                }
                case 4:
                    require(vtl_stack_push_int(stack, number) == 0);
                    stacked.insert(stacked.begin(), text);
                    break;
                case 5:
                    require((vtl_stack_pop(stack, VTL_TYPE_ANY, &popped, nullptr) == 0) ==
                            !stacked.empty());
                    if (popped != nullptr) {
                        require(shown(Value(popped)) == stacked.front());
                        stacked.erase(stacked.begin());
                    }
                    break;
                case 6:
                    require(vtl_stack_append_int(stack, number) == 0);
                    stacked.push_back(text);
                    break;
                case 7: {
                    require(vtl_dict_set_int(dict, key.c_str(), number) == 0);
                    const auto entry = entryOf(entries, key);
                    (entry != entries.end() ? *entry : entries.emplace_back()) = key + "=" + text;
                    break;
                }
                case 8: {
                    const auto entry = entryOf(entries, key);
                    const bool removed = vtl_dict_remove(dict, VTL_TYPE_STRING, key.c_str()) == 0;
                    require(removed == (entry != entries.end()));
                    entries.erase(entry, removed ? entry + 1 : entry);
                    break;
                }
                default:
                    require(vtl_clear(number % 2 != 0 ? list : dict) == 0);
                    (number % 2 != 0 ? listed : entries).clear();
            }
            require(shown(list) == "[" + joined(listed) + "]");
            require(shown(stack) == "[" + joined(stacked) + "]");
            require(shown(dict) == "{" + joined(entries) + "}");
        }
    }
    require(WatchedMemory::sLive == 0);
    return 0;
}
