// The files of a card folder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/card/skipped.h"

namespace simulator {

struct CardFile {
    std::string name;
    uint64_t size;      // bytes
    uint32_t modified;  // seconds since 1970
};

struct CardDirectory {
    std::string name;
    std::vector<CardFile> files;  // by name
};

// Reads CARD/DCIM/*/: the directories whose names have 8 characters, by name, and in each the files
// whose names have at most 12; nothing else on a card is reachable through the database, and is
// added to skipped. Throws InputError when there is no DCIM or a folder cannot be read.
[[nodiscard]] std::vector<CardDirectory> scanCard(const std::filesystem::path& card,
                                                  std::vector<Skipped>& skipped);

}  // namespace simulator
