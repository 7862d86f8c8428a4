// The least that a camera's libraries can be: the database answers inside the process, the event
// builder has an encoding of its own. camera_sdkConfig.cmake makes a package of it:
//
//   cc -shared -fPIC -I.../platform/include -o libcamera_sdk.so camera_sdk.c
#include <stdio.h>
#include <string.h>
#include <mediacheckd/platform/csi.h>
#include <mediacheckd/platform/debug_level.h>
#include <mediacheckd/platform/vxipc.h>
#include <mediacheckd/platform/vxmsg.h>

uint32_t g_debug_level = 0;

int csi_get(int key, uint32_t size, uint32_t* length, void* buffer) {
    const uint32_t model = 51;
    if (key != CSI_MODEL_NUMBER || size < sizeof model) {
        return 1;
    }
    *length = sizeof model;
    memcpy(buffer, &model, sizeof model);
    return 0;
}

int vxIpcInit(const char* channel, vxIpcEndpoint* endpoint) {
    endpoint->opaque[0] = 0;
    return strcmp(channel, "rtos_media_db") == 0 ? 1 : -1;
}

int vxIpcSend(vxIpcEndpoint* endpoint, const void* message, int length) {
    return length < 12 ? -1 : (memcpy(endpoint->opaque, message, 12), length);
}

// The histogram: one item in the first bucket.
int vxIpcReceive(vxIpcEndpoint* endpoint, void* buffer, int size) {
    const uint32_t reply[37] = {endpoint->opaque[0], 0, 1, 0, endpoint->opaque[2], 1};
    return size < (int)sizeof reply ? -1 : (memcpy(buffer, reply, sizeof reply), (int)sizeof reply);
}

void vxIpcDestroy(vxIpcEndpoint* endpoint) {
    memset(endpoint, 0, sizeof *endpoint);
}

// A message is its length in two bytes, most significant first, and texts of one length byte each.
static uint32_t append(unsigned char* message, uint32_t capacity, uint32_t length,
                       const void* value) {
    const uint32_t used = (uint32_t)message[0] << 8 | message[1];
    if (length > 255 || used + 1 + length > capacity) {
        return 0;
    }
    message[used] = (unsigned char)length;
    memcpy(message + used + 1, length != 0 ? value : "", length);
    message[0] = (unsigned char)((used + 1 + length) >> 8);
    message[1] = (unsigned char)(used + 1 + length);
    return 1 + length;
}

int vxmsg_build(vxmsg_builder* builder, const char* type, const void* payload, uint32_t length,
                uint32_t id) {
    builder->length = 0;
    if (builder->capacity < 2 + 3 + 5 + 1 + length || length > 255) {
        return -1;
    }
    builder->data[0] = 0;
    builder->data[1] = 2;
    append(builder->data, builder->capacity, 2, type);
    append(builder->data, builder->capacity, sizeof id, &id);
    append(builder->data, builder->capacity, length, payload);
    builder->length = builder->data[1];
    return 0;
}

uint32_t sntlv_add_bin(unsigned char* message, uint32_t capacity, uint8_t tag, uint32_t length,
                       const void* value) {
    (void)tag;
    return capacity < 2 ? 0 : append(message, capacity, length, value);
}

uint32_t sntlv_add_dat(unsigned char* message, uint32_t capacity, uint8_t tag, uint32_t length,
                       const void* value) {
    return sntlv_add_bin(message, capacity, tag, length, value);
}
