// The pause that follows a failed exchange with the media database.
#pragma once

#include <unistd.h>

// Sleeps 100 ms.
inline void retryPause() {
    usleep(100000);
}
