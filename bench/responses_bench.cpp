// What it costs to write a media list from replies in memory: against RapidJSON and cJSON writing
// the same document, which they are given as parsed items and as a finished tree, and against
// copying the finished text.
#include <benchmark/benchmark.h>
#include <cjson/cJSON.h>
#include <rapidjson/writer.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

#include "bench/memory_channel.h"
#include "bench/ratio.h"
#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/http/list/list_pages.h"
#include "libvxMediaRTOSDB/src/http/text/media_db_output_guard.h"
#include "libvxMediaRTOSDB/src/http/text/media_values.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

static size_t sAllocations = 0;

void* operator new(size_t size) {
    ++sAllocations;
    return std::malloc(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}

namespace {

constexpr uint32_t kItemsPerPage = 10;
constexpr uint32_t kItemsPerDirectory = 100;
constexpr uint32_t kHighlights = 3;
constexpr uint32_t kListOptions = LIST_OPTION_INCLUDE_GUMI;

template <typename Record>
void append(std::vector<uint8_t>* bytes, const Record& record) {
    const auto* first = reinterpret_cast<const uint8_t*>(&record);
    bytes->insert(bytes->end(), first, first + sizeof record);
}

db_item_record itemOf(uint32_t index) {
    const bool video = index % 2 == 0;
    char name[24];
    db_item_record item = {};
    item.content_type = video ? DB_CONTENT_TYPE_SINGLE_VIDEO : DB_CONTENT_TYPE_SINGLE_PHOTO;
    std::snprintf(name, sizeof name, "%03uVMEDI", 100 + index / kItemsPerDirectory);
    fillField(item.dir_name, name);
    std::snprintf(name, sizeof name, "V001%04u.%s", index, video ? "MP4" : "JPG");
    fillField(item.file_name, name);
    item.created = 1700000000 + index * 60;
    item.modified = 1700000030 + index * 60;
    item.highlight_count = video ? kHighlights : 0;
    item.attributes = (index * 0x9E3779B9u & 0x1FFE) | ITEM_ATTRIBUTE_PARENT_GUMI;
    item.size = 5000000ull + index * 123456789ull;
    item.score = index % 100;
    return item;
}

db_gumi gumiOf(uint32_t index) {
    db_gumi gumi;
    for (uint8_t& byte : gumi.bytes) {
        byte = static_cast<uint8_t>(index = index * 1664525 + 1013904223);
    }
    return gumi;
}

void appendItem(std::vector<uint8_t>* page, uint32_t index) {
    append(page, itemOf(index));
    append(page, gumiOf(index));
    append(page, gumiOf(index + 1));
    if (index % 2 != 0) {
        return;
    }
    db_video_specific_info video = {};
    video.ls = index % 4 == 0 ? 0 : index;
    video.duration_ms = 1000 * index + 789;
    video.highlight_count = kHighlights;
    append(page, video);
    for (uint32_t i = 0; i < kHighlights; ++i) {
        u32le time;
        time = 1000 * i + index;
        append(page, time);
    }
}

// Fills the channel with a database of count items and finds them in its pages.
std::vector<ListItem> fillChannel(uint32_t count) {
    std::vector<ListItem> items;
    g_memoryChannelPages.assign(count / kItemsPerPage, {});
    g_memoryChannelPageSize = kItemsPerPage;
    for (uint32_t start = 0; start < count; start += kItemsPerPage) {
        db_list_response_header header = {};
        header.header.count_returned = kItemsPerPage;
        header.list_options = kListOptions;
        header.total_entries = count;
        std::vector<uint8_t>& page = g_memoryChannelPages[start / kItemsPerPage];
        append(&page, header);
        for (uint32_t i = 0; i < kItemsPerPage; ++i) {
            appendItem(&page, start + i);
        }
        size_t offset = sizeof header;
        for (uint32_t i = 0; i < kItemsPerPage; ++i) {
            ListItem item;
            const ItemLayout layout = {kListOptions, ITEM_ATTRIBUTE_PARENT_GUMI, false};
            if (readListItem(page, &offset, layout, &item) != ItemStatus::kOk) {
                std::abort();
            }
            items.push_back(item);
        }
    }
    return items;
}

// The page buffer as the library fills it.
class Library {
  public:
    Library() : mOutput(nullptr), mTexts(*mOutput.get()), mPlan() {
        mPlan.firstRequest.list.header.request_count = kItemsPerPage;
        mPlan.requestSize = sizeof mPlan.firstRequest.list;
        mPlan.maxRequests = UINT32_MAX;
        mPlan.fieldMask = kAllFields;
    }

    std::string_view write() {
        FileGroups groups(&mTexts);
        if (listPages(mConnection.get(), mPlan, &groups) != HTTP_OK) {
            std::abort();
        }
        groups.leave();
        return groups.text();
    }

  private:
    MediaDBOutputGuard mOutput;
    OutputTexts mTexts;
    RtosConnectionGuard mConnection;
    ListPlan mPlan;
};

// RapidJSON's output into memory that is there.
class FixedStream {
  public:
    using Ch = char;
    FixedStream(char* text) : mStart(text), mEnd(text) {}
    void Put(char c) { *mEnd++ = c; }
    void Flush() {}
    std::string_view text() const { return {mStart, static_cast<size_t>(mEnd - mStart)}; }

  private:
    char* mStart;
    char* mEnd;
};

using Writer = rapidjson::Writer<FixedStream>;

template <size_t Size>
void writeText(Writer& writer, const char (&key)[Size], std::string_view value) {
    writer.Key(key, Size - 1);
    writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
}

template <size_t Size, typename Number>
void writeNumber(Writer& writer, const char (&key)[Size], Number value) {
    char digits[20];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    writeText(writer, key, {digits, static_cast<size_t>(end - digits)});
}

template <size_t Size>
void writeGumi(Writer& writer, const char (&key)[Size], const db_gumi& gumi) {
    char digits[2 * kGumiSize];
    write(digits, HexText{gumi.bytes});
    writeText(writer, key, {digits, sizeof digits});
}

void writeItem(Writer& writer, const ListItem& item) {
    const db_item_record& record = *item.record;
    const auto flag = [&](uint32_t attribute) -> uint32_t {
        return hasAttribute(record, attribute);
    };
    writer.StartObject();
    writeText(writer, "n", textOf(record.file_name));
    writeNumber(writer, "mod", uint32_t{record.modified});
    writeNumber(writer, "cre", uint32_t{record.created});
    writeNumber(writer, "us", uint32_t{record.upload_status});
    writeNumber(writer, "tr", flag(ITEM_ATTRIBUTE_TR));
    writeGumi(writer, "gumi", *item.gumi);
    writeGumi(writer, "pgumi", *item.parentGumi);
    if (const auto* video = item.videoInfo) {
        if (video->ls == 0) {
            writeText(writer, "ls", "-1");
        } else {
            writeNumber(writer, "ls", uint32_t{video->ls});
        }
        writeNumber(writer, "cl", uint32_t{video->clip});
        writeNumber(writer, "pta", flag(ITEM_ATTRIBUTE_PTA));
        writeText(writer, "ao", audioOption(record));
        writeNumber(writer, "mp", flag(ITEM_ATTRIBUTE_MP));
        writeNumber(writer, "dur", durationSeconds(*video));
        writeNumber(writer, "mahs", itemScore(record));
        writeNumber(writer, "hc", uint32_t{record.highlight_count});
        writer.Key("hi", 2);
        writer.StartArray();
        for (const u32le& time : item.highlights) {
            writer.Int(asSigned(time));
        }
        writer.EndArray();
    } else {
        writeNumber(writer, "hc", uint32_t{record.highlight_count});
        writeNumber(writer, "hdr", flag(ITEM_ATTRIBUTE_HDR));
        writeNumber(writer, "wdr", flag(ITEM_ATTRIBUTE_WDR));
        writeNumber(writer, "raw", flag(ITEM_ATTRIBUTE_RAW));
    }
    writeNumber(writer, "s", uint64_t{record.size});
    writer.EndObject();
}

// The same groups, inside the brackets that a JSON document needs around them.
std::string_view writeByRapidJson(Writer& writer, FixedStream& stream, char* buffer,
                                  const std::vector<ListItem>& items) {
    stream = FixedStream(buffer);
    writer.Reset(stream);
    writer.StartArray();
    std::string_view directory;
    for (const ListItem& item : items) {
        const std::string_view itsDirectory = textOf(item.record->dir_name);
        if (itsDirectory != directory) {
            if (!directory.empty()) {
                writer.EndArray();
                writer.EndObject();
            }
            directory = itsDirectory;
            writer.StartObject();
            writeText(writer, "d", directory);
            writer.Key("fs", 2);
            writer.StartArray();
        }
        writeItem(writer, item);
    }
    writer.EndArray();
    writer.EndObject();
    writer.EndArray();
    return stream.text().substr(1, stream.text().size() - 2);
}

void require(bool same, const char* what) {
    if (same) {
        return;
    }
    std::fprintf(stderr, "responses_bench: %s writes another document\n", what);
    std::exit(1);
}

void count(benchmark::State& state, size_t bytes) {
    state.SetBytesProcessed(static_cast<int64_t>(bytes) * state.iterations());
    state.SetItemsProcessed(state.range(0) * state.iterations());
}

void library(benchmark::State& state) {
    fillChannel(static_cast<uint32_t>(state.range(0)));
    Library library;
    size_t bytes = library.write().size();
    const size_t allocationsBefore = sAllocations;
    for (auto _ : state) {
        benchmark::DoNotOptimize(bytes = library.write().size());
    }
    require(sAllocations == allocationsBefore, "an allocating library");
    count(state, bytes);
}

void rapidJson(benchmark::State& state) {
    const auto items = fillChannel(static_cast<uint32_t>(state.range(0)));
    const auto buffer = std::make_unique<char[]>(kPageLimit);
    FixedStream stream(buffer.get());
    Writer writer(stream);
    std::string_view text = writeByRapidJson(writer, stream, buffer.get(), items);
    require(text == Library().write(), "RapidJSON");
    for (auto _ : state) {
        benchmark::DoNotOptimize(text = writeByRapidJson(writer, stream, buffer.get(), items));
    }
    count(state, text.size());
}

void cJson(benchmark::State& state) {
    fillChannel(static_cast<uint32_t>(state.range(0)));
    std::string text = "[";
    text += Library().write();
    text += "]";
    const std::unique_ptr<cJSON, void (*)(cJSON*)> tree(cJSON_Parse(text.c_str()), cJSON_Delete);
    const auto buffer = std::make_unique<char[]>(2 * kPageLimit);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            cJSON_PrintPreallocated(tree.get(), buffer.get(), 2 * kPageLimit, 0));
    }
    require(buffer.get() == text, "cJSON");
    count(state, text.size());
}

void copy(benchmark::State& state) {
    fillChannel(static_cast<uint32_t>(state.range(0)));
    const std::string text(Library().write());
    const auto buffer = std::make_unique<char[]>(kPageLimit);
    for (auto _ : state) {
        std::memcpy(buffer.get(), text.data(), text.size());
        benchmark::ClobberMemory();
    }
    count(state, text.size());
}

BENCHMARK(library)->Arg(10)->Arg(100)->Arg(400);
BENCHMARK(rapidJson)->Arg(400);
BENCHMARK(cJson)->Arg(400);
BENCHMARK(copy)->Arg(400);

}  // namespace

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv,
                         {{"library/400", "rapidJson/400", 0.2},
                          {"library/400", "cJson/400", 0.5},
                          {"library/400", "copy/400", 15},
                          {"library/100", "library/10", 11},
                          {"library/400", "library/10", 44}});
}
