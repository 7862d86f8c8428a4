// The camera's message library: event messages of a typed header and tagged elements.
//
// The byte encoding belongs to the library; a message is built in a record that the caller owns.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define VXMSG_DATA_SIZE 1500

typedef struct vxmsg_builder {
    uint32_t capacity;  // bytes of data that may be used; set by the caller before building
    uint32_t length;    // bytes of the message so far; the caller adds what each append returns
    unsigned char data[VXMSG_DATA_SIZE];
} vxmsg_builder;

// Starts the message: a header of the given type that carries payloadLength bytes of payload.
// type: two characters. id: a number that receivers of the type agree on.
// Sets builder->length. Returns 0, or a negative number when the header does not fit (length 0).
int vxmsg_build(vxmsg_builder* builder, const char* type, const void* payload,
                uint32_t payloadLength, uint32_t id);

// Appends an element that carries length bytes.
// message: the start of the message, whose header keeps its running length.
// capacity: bytes the whole message may use.
// Returns the number of bytes appended; 0, with nothing added, when they do not fit.
uint32_t sntlv_add_bin(unsigned char* message, uint32_t capacity, uint8_t tag, uint32_t length,
                       const void* value);

// As sntlv_add_bin, for an element that may be empty (length 0 and a null value).
uint32_t sntlv_add_dat(unsigned char* message, uint32_t capacity, uint8_t tag, uint32_t length,
                       const void* value);

#ifdef __cplusplus
}
#endif
