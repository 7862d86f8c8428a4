// Writes the upload status of one file.
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vcore/log.h>
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

int ZEPMediaList::setUploadStatus(const std::string& path, int status) {
    if (path.size() != kDirNameSize + 1 + kFileNameSize || path.find('/') != kDirNameSize) {
        return -1;
    }
    const std::string dirName = path.substr(0, kDirNameSize);
    const std::string fileName = path.substr(kDirNameSize + 1);
    VLOG_INFO("[ZML]: Calling dbSetZEPUploadStatus(%s, %s, %d, 0x%08X)\n", dirName.c_str(),
              fileName.c_str(), status, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(mToken)));
    return dbSetZEPUploadStatus(dirName.c_str(), fileName.c_str(), static_cast<uint32_t>(status),
                                mToken);
}
