// The sample card, made once a test program.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

inline const std::string& sampleCard() {
    static const std::string card = [] {
        std::string folder = "/tmp/sample-card";
        if (std::system((MAKE_SAMPLE_CARD " " + folder).c_str()) != 0) {
            std::abort();
        }
        return folder;
    }();
    return card;
}

// A card of empty files, each given as DIRECTORY/NAME, in a folder of its own.
inline std::filesystem::path makeCard(std::initializer_list<const char*> files,
                                      std::string_view settings = "") {
    static int made = 0;
    std::filesystem::path card = "/tmp/card" + std::to_string(++made);
    create_directories(card / "DCIM");
    for (const char* file : files) {
        create_directories((card / "DCIM" / file).parent_path());
        std::ofstream(card / "DCIM" / file);
    }
    if (!settings.empty()) {
        std::ofstream(card / "card.json") << settings;
    }
    return card;
}
