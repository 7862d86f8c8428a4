// The camera's error codes and their names.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum vxErrno {
    VX_OK = 0,
    VX_ERR = -1,
    VX_ERR_OUTOFMEM = -2,
    VX_ERR_INVALID_PARAM = -3,
    VX_ERR_INCOMPLETE_CGI_PARAM = -4,
    VX_ERR_MQ_FAIL = -5,
    VX_ERR_NO_SDCARD = -6,
    VX_ERR_SDCARD_FULL = -7,
    VX_ERR_CREATING_MISC_DIR = -8,
    VX_ERR_UPLOADED_FILE = -9,
    VX_ERR_FILE_OPEN = -10,
    VX_ERR_FILE_READ = -11,
    VX_ERR_FILE_WRITE = -12,
    VX_ERR_REMOTE_FILE_OPEN = -14,
    VX_ERR_REMOTE_FILE_READ = -15,
    VX_ERR_REMOTE_FILE_WRITE = -16,
    VX_ERR_ACCESS_DENIED = -17,
    VX_ERR_DOWNLOAD_FAILED = -100,
    VX_ERR_NAK = -101,
    VX_ERR_RESPONSE_ALREADY_SENT = -102,
    VX_ERR_NAK_OFF = -103,
    VX_ERR_NOT_SUPPORTED = -104
};

struct vxErrnoStr {
    const char* name;
    int32_t code;
};

#define VX_ERRNO_STR_MAP_SIZE 22

// Other components find this by name.
#pragma GCC visibility push(default)

// Every code with its name; no record marks the end.
extern const struct vxErrnoStr vxErrnoStrMap[VX_ERRNO_STR_MAP_SIZE];

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif
