// A media database in memory: answers list pages and status writes as the real one does, and fails
// or changes its session at a chosen exchange.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include "tests/support/scripted_platform.h"

struct CardItem {
    uint32_t type;
    std::string fileName;
    uint32_t group = 0;
    uint32_t first = 0;
    uint32_t last = 0;
    uint64_t size = 0;
    uint32_t highlights = 0;
    uint32_t created = 0;
    uint32_t clip = 0;
    uint32_t status = 0;
};

struct CardDatabase {
    static constexpr int kNever = std::numeric_limits<int>::max();

    std::vector<CardItem> items;
    std::vector<CardItem> sessionFiles;
    uint32_t sessionId = 7;
    int failingExchange = kNever;     // from 1; every attempt at it fails
    int changingExchange = kNever;    // from 1; the session id is another from it on
    uint32_t claimedItems = 0;        // items that a page claims and does not hold
    std::vector<std::string> folded;  // files whose status was set to 5

    // Answers the scripted platform's requests from now on. The database must outlive their use.
    void serve();

  private:
    scripted::Exchange answer(const scripted::Bytes& request);
    scripted::Bytes page(const scripted::Bytes& request) const;
};
