#include <mediacheckd/vxMediaRTOSDB/directory_scan.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr int kCannotConnect = -1;
constexpr int kTooShort = -3;
constexpr int kBadDirectoryName = -4;
constexpr int kNoEntries = -5;
constexpr int kFailureStatus = -7;
constexpr int kTooManyEntries = -10;

using MessageBuffer = std::array<uint8_t, kResponseBufferSize>;
using ResultItems = std::span<const scandir_result_item>;

// Returns the whole result items of a message, at most maximum, from an offset on.
ResultItems resultItems(const MessageBuffer& buffer, int received, size_t offset, size_t maximum) {
    const auto size = static_cast<size_t>(received);
    const size_t count = std::min((size - offset) / sizeof(scandir_result_item), maximum);
    return *RecordReader(std::span(buffer).first(size), offset)
                .readArray<scandir_result_item>(count);
}

// The caller's array while it is filled.
class EntryArray {
  public:
    EntryArray(std::span<db_scandir_entry> entries, db_scandir_filter filter)
        : mEntries(entries), mFilter(filter) {}

    // Takes the items, as far as the array has room for all that were taken. Returns whether it
    // had.
    bool take(ResultItems items) {
        const size_t room = mEntries.size() - mTaken;
        for (const auto& item : items.first(std::min(items.size(), room))) {
            keepIfWanted(item);
        }
        mTaken += std::min(items.size(), room);
        if (items.size() <= room) {
            return true;
        }
        UTIL_LOG(UTIL_LOG_ERROR, "not enough size of file_entries!");
        return false;
    }

    [[nodiscard]] uint32_t taken() const { return static_cast<uint32_t>(mTaken); }
    [[nodiscard]] uint32_t kept() const { return static_cast<uint32_t>(mKept); }

  private:
    void keepIfWanted(const scandir_result_item& item) {
        const auto name = terminated(item.file_name);
        if (name[0] == '\0') {
            UTIL_LOG(UTIL_LOG_ERROR, "scandir_result_item filename is empty!");
        }
        if (mFilter && mFilter(name.data(), kFileNameSize) == 0) {
            return;
        }
        db_scandir_entry& entry = mEntries[mKept++];
        std::memcpy(entry.file_name, name.data(), name.size());
        entry.word1 = item.word1;
        entry.word2 = item.word2;
    }

    std::span<db_scandir_entry> mEntries;
    db_scandir_filter mFilter;
    size_t mTaken = 0;
    size_t mKept = 0;
};

// Returns 0 for a response whose entries can be taken.
int checkResponse(const db_scandir_request& request, const db_scandir_response_header& response,
                  int received) {
    if (received < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "bytesRead=%d, RTOS transaction failed.\n", received);
        return received;
    }
    if (received < static_cast<int>(sizeof response)) {
        UTIL_LOG(UTIL_LOG_ERROR,
                 "bytesRead=%d < sizeof db_scandir_response_header:%d, failed, ret -3\n", received,
                 static_cast<int>(sizeof response));
        return kTooShort;
    }
    logResponse(response);
    if (response.status != 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "DB_CMD_NON_DB_SCANDIR, error on IPC received, status %d\n",
                 signedWord(response.status));
        return kFailureStatus;
    }
    if (response.token != request.header.token) {
        UTIL_LOG(UTIL_LOG_WARN, "DB_CMD_NON_DB_SCANDIR response token is not matched!");
    }
    return 0;
}

// Takes the entries of all messages. The first message is in the buffer.
int takeEntries(rtosConnection* connection, MessageBuffer& buffer, int received,
                EntryArray* entries) {
    db_scandir_response_header header;
    std::memcpy(&header, buffer.data(), sizeof header);
    const auto first =
        resultItems(buffer, received, sizeof header, uint32_t{header.number_file_names});
    int result = 0;
    if (first.empty()) {
        UTIL_LOG(UTIL_LOG_ERROR, "no scandir_result_item received!");
        result = kNoEntries;
    }
    if (!entries->take(first)) {
        return kTooManyEntries;
    }

    for (uint32_t messages = 1;
         messages < header.number_transfers && entries->taken() < header.number_file_names;
         ++messages) {
        const int more = rtosConnectionRecv(connection, buffer.data(), kResponseBufferSize);
        if (more < static_cast<int>(sizeof(scandir_result_item))) {
            break;
        }
        if (!entries->take(resultItems(buffer, more, 0, kResponseBufferSize))) {
            return kTooManyEntries;
        }
    }
    return result;
}

}  // namespace

int dbScanDirectory(const char* dirName, db_scandir_entry* entries, uint32_t* entryCount,
                    db_scandir_filter filter) {
    EntryArray array({entries, *entryCount}, filter);
    *entryCount = 0;
    if (!hasLength(dirName, kDirNameSize)) {
        return kBadDirectoryName;
    }
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        return kCannotConnect;
    }

    MessageBuffer buffer;
    db_scandir_request request;
    fillHeader(&request.header, DB_CMD_NON_DB_SCANDIR, 1, buffer.data());
    fillField(request.dir_name, dirName);
    logRequest(request);
    const int received = rtosCall(connection.get(), &request, sizeof request, buffer.data());
    int result = checkResponse(
        request, *reinterpret_cast<const db_scandir_response_header*>(buffer.data()), received);
    if (result == 0) {
        result = takeEntries(connection.get(), buffer, received, &array);
    }
    *entryCount = array.kept();
    return result;
}
