// Typed lists and dicts against the containers of GLib and Jansson, by number of elements.
//
// A dict searches from its first entry on: setting 100,000 new keys one after the other takes
// about a minute. So the dicts are filled without a search, and one set and one get are measured,
// with keys from everywhere in turn.
#include <benchmark/benchmark.h>
#include <glib-object.h>
#include <jansson.h>

#include <memory>
#include <string>
#include <vector>

#include "bench/ratio.h"
#include <mediacheckd/vtl/chain.h>
#include <mediacheckd/vtl/dict.h>
#include <mediacheckd/vtl/list.h>
#include <mediacheckd/vtl/memory.h>

namespace {

// Names like those of media files, and an order that visits all of them.
class Keys {
  public:
    explicit Keys(int64_t count) {
        for (int64_t i = 0; i < count; ++i) {
            mNames.push_back("100MEDIA/IMG_" + std::to_string(1'000'000 + i) + ".JPG");
        }
    }

    const std::vector<std::string>& all() const { return mNames; }

    const char* next() {
        constexpr size_t kPrimeStep = 7919;
        mAt = (mAt + kPrimeStep) % mNames.size();
        return mNames[mAt].c_str();
    }

  private:
    std::vector<std::string> mNames;
    size_t mAt = 0;
};

using Value = std::unique_ptr<vtl_value, decltype(&vtl_destroy)>;
using Table = std::unique_ptr<GHashTable, decltype(&g_hash_table_unref)>;
using Json = std::unique_ptr<json_t, decltype(&json_decref)>;

GValue* intValue(int number) {
    auto* value = g_new0(GValue, 1);
    g_value_init(value, G_TYPE_INT);
    g_value_set_int(value, number);
    return value;
}

void freeValue(gpointer value) {
    g_value_unset(static_cast<GValue*>(value));
    g_free(value);
}

Value filledDict(const Keys& keys) {
    Value dict(vtl_dict_create(), vtl_destroy);
    const int number = 1;
    for (const std::string& key : keys.all()) {
        auto* entry = static_cast<vtl_dict_entry*>(vtl_malloc(sizeof(vtl_dict_entry)));
        *entry = {vtl_value_create(VTL_TYPE_STRING, key.c_str(), nullptr),
                  vtl_value_create(VTL_TYPE_INT, &number, nullptr)};
        vtl_chain_insert_item_before(dict->payload.chain, nullptr, entry);
    }
    return dict;
}

Table filledTable(const Keys& keys) {
    Table table(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, freeValue),
                g_hash_table_unref);
    for (const std::string& key : keys.all()) {
        g_hash_table_insert(table.get(), g_strdup(key.c_str()), intValue(1));
    }
    return table;
}

Json filledObject(const Keys& keys) {
    Json object(json_object(), json_decref);
    for (const std::string& key : keys.all()) {
        json_object_set_new(object.get(), key.c_str(), json_integer(1));
    }
    return object;
}

void append(benchmark::State& state) {
    for (auto _ : state) {
        const Value list(vtl_list_create(), vtl_destroy);
        for (int i = 0; i < state.range(0); ++i) {
            vtl_list_append_int(list.get(), i);
        }
    }
}

void appendGlib(benchmark::State& state) {
    for (auto _ : state) {
        GQueue queue = G_QUEUE_INIT;  // a GList that knows its tail
        for (int i = 0; i < state.range(0); ++i) {
            g_queue_push_tail(&queue, intValue(i));
        }
        g_queue_clear_full(&queue, freeValue);
    }
}

void appendJansson(benchmark::State& state) {
    for (auto _ : state) {
        const Json array(json_array(), json_decref);
        for (int i = 0; i < state.range(0); ++i) {
            json_array_append_new(array.get(), json_integer(i));
        }
    }
}

void set(benchmark::State& state) {
    Keys keys(state.range(0));
    const Value dict = filledDict(keys);
    for (auto _ : state) {
        vtl_dict_set_int(dict.get(), keys.next(), 2);
    }
}

void setGlib(benchmark::State& state) {
    Keys keys(state.range(0));
    const Table table = filledTable(keys);
    for (auto _ : state) {
        g_hash_table_replace(table.get(), g_strdup(keys.next()), intValue(2));
    }
}

void setJansson(benchmark::State& state) {
    Keys keys(state.range(0));
    const Json object = filledObject(keys);
    for (auto _ : state) {
        json_object_set_new(object.get(), keys.next(), json_integer(2));
    }
}

void get(benchmark::State& state) {
    Keys keys(state.range(0));
    const Value dict = filledDict(keys);
    int number = 0;
    for (auto _ : state) {
        vtl_dict_get_int(dict.get(), keys.next(), &number);
        benchmark::DoNotOptimize(number);
    }
}

void getGlib(benchmark::State& state) {
    Keys keys(state.range(0));
    const Table table = filledTable(keys);
    for (auto _ : state) {
        const void* value = g_hash_table_lookup(table.get(), keys.next());
        benchmark::DoNotOptimize(g_value_get_int(static_cast<const GValue*>(value)));
    }
}

void getJansson(benchmark::State& state) {
    Keys keys(state.range(0));
    const Json object = filledObject(keys);
    for (auto _ : state) {
        benchmark::DoNotOptimize(json_integer_value(json_object_get(object.get(), keys.next())));
    }
}

BENCHMARK(append)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(appendGlib)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(appendJansson)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(set)->Arg(10)->Arg(30)->Arg(100)->Arg(1000)->Arg(100000);
BENCHMARK(setGlib)->Arg(10)->Arg(30)->Arg(100)->Arg(1000)->Arg(100000);
BENCHMARK(setJansson)->Arg(10)->Arg(30)->Arg(100)->Arg(1000)->Arg(100000);
BENCHMARK(get)->Arg(10)->Arg(30)->Arg(100)->Arg(1000)->Arg(100000);
BENCHMARK(getGlib)->Arg(10)->Arg(30)->Arg(100)->Arg(1000)->Arg(100000);
BENCHMARK(getJansson)->Arg(10)->Arg(30)->Arg(100)->Arg(1000)->Arg(100000);

}  // namespace

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv,
                         {{"append/1000", "appendGlib/1000", 1.0},
                          {"append/100000", "appendGlib/100000", 1.0},
                          {"set/10", "setGlib/10", 0.6},
                          {"get/10", "getGlib/10", 1.0}});
}
