#include "simulator/card/media_item.h"

#include <cstring>

namespace simulator {

std::string pathOf(const db_item_record& file) {
    return std::string(file.dir_name, kDirNameSize)
        .append("/")
        .append(file.file_name, strnlen(file.file_name, kFileNameSize));
}

}  // namespace simulator
