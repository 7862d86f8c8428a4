// Runs a response producer and checks the form of what it prints.
#pragma once

#include <functional>

#include "tests/support/db_replies.h"
#include "tests/support/produced.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

constexpr const char* kCardFolder = "/tmp/fuse_d";

// Also checks that its result fits the status and that it closes each connection it opens.
Produced produce(const std::function<int()>& producer);

// Starts a test: no script, and a card with the identity 12345.
void resetWithCard();

// A database that holds items (with all that follows their records) and answers list queries.
struct ListDatabase {
    std::vector<scripted::Bytes> items;
    uint32_t listOptions = 0;  // that its responses name
    size_t messageSize = kResponseBufferSize;

    scripted::Exchange answer(const scripted::Bytes& request) const;
};

// Makes an allocation of the library fail: the n-th from now on, from 0.
void failAllocation(int n);
