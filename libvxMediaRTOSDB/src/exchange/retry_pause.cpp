#include "libvxMediaRTOSDB/src/exchange/retry_pause.h"

#include <unistd.h>

void retryPause() {
    usleep(100000);
}
