// A log sink: filters lines by category and level, stamps them with the local time and writes them
// to the selected outputs. A sink takes no lock of its own; vcore::Logger serialises its use.
//
// Every function that returns int returns 0 on success and 1 when the sink or another pointer it
// needs is null, unless said otherwise.
#pragma once

#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

// Outputs of a sink, as a mask.
#define LOG_OUT_STDOUT 0x1U
#define LOG_OUT_STDERR 0x2U
#define LOG_OUT_FILE 0x4U
#define LOG_OUT_CALLBACK 0x8U

// Takes one finished line, newline included, valid during the call.
typedef void (*log_callback_t)(const char* line);

typedef struct log_callback_list log_callback_list;

// Made by log_sink_create; read and changed through the functions below.
typedef struct log_sink {
    uint32_t outputs;              // mask of LOG_OUT_*
    uint32_t level;                // lines of this level or below are written
    uint32_t levelMask;            // levels that are written even above the threshold
    uint32_t categoryMask;         // categories that are written
    char* path;                    // log file name, owned, or null
    char* mode;                    // fopen mode last used, owned, or null
    log_callback_list* callbacks;  // in order of registration, owned
    FILE* stream;                  // the open log file, or null
    uint32_t ownsStream;           // 1 when the sink opened the stream, 0 when it was attached
} log_sink_t;

// Other components find these by name.
#pragma GCC visibility push(default)

// Returns a new sink without outputs whose filters pass no line, to be released with
// log_sink_destroy, or null.
log_sink_t* log_sink_create(void);

// Releases the sink and what it owns; an attached stream stays open. Returns 0, also for null.
int log_sink_destroy(log_sink_t* sink);

int log_sink_set_outputs(log_sink_t* sink, uint32_t outputs);
int log_sink_get_outputs(const log_sink_t* sink, uint32_t* outputs);

int log_sink_set_level(log_sink_t* sink, uint32_t level);
int log_sink_get_level(const log_sink_t* sink, uint32_t* level);

int log_sink_set_level_mask(log_sink_t* sink, uint32_t levelMask);
int log_sink_get_level_mask(const log_sink_t* sink, uint32_t* levelMask);

int log_sink_set_category_mask(log_sink_t* sink, uint32_t categoryMask);
int log_sink_get_category_mask(const log_sink_t* sink, uint32_t* categoryMask);

// Opens the log file with an fopen mode; copies of both texts are kept, also when it does not open.
// A stream that is already open is not closed: close it first.
// Returns 1 also when the file does not open; the sink has no stream then.
int log_sink_open_file(log_sink_t* sink, const char* path, const char* mode);

// Closes the stream, an attached one too, and forgets the file's name and mode.
int log_sink_close_file(log_sink_t* sink);

// Writes to a stream of the caller's from now on; it stays the caller's to close, unless
// log_sink_close_file or another stream comes first. An open stream is closed before, as by
// log_sink_close_file. A null stream only does that.
int log_sink_attach_stream(log_sink_t* sink, FILE* stream);

// Stores the name and mode of the log file, or null where there is none, through each pointer that
// is not null. The texts stay the sink's.
int log_sink_get_file(const log_sink_t* sink, char** path, char** mode);

// Stores the open stream, or null.
int log_sink_get_stream(const log_sink_t* sink, FILE** stream);

// Flushes the open stream, if any.
int log_sink_flush(log_sink_t* sink);

// Adds a callback at the end of the list; one that is in the list already stays where it is.
// Returns 1 also when memory runs out.
int log_sink_add_callback(log_sink_t* sink, log_callback_t callback);

// Removes a callback. Returns 0 whether or not it was in the list.
int log_sink_remove_callback(log_sink_t* sink, log_callback_t callback);

// Writes one line to the selected outputs, in the order standard output, standard error, log file,
// callbacks, each flushed at once:
//   2024-05-01T13:07:09.042 MESSAGE
// with one newline, whether or not the message ends in one.
//
// The line is written when category shares a bit with the category mask, and level is at most the
// threshold or shares a bit with the level mask.
//
// Returns 0 when the line was written or filtered; 1 when sink or format is null, the message is
// empty or does not format, or memory runs out. Failures of the outputs are not reported.
int log_sink_vprintf(log_sink_t* sink, uint32_t category, uint32_t level, const char* format,
                     va_list arguments) __attribute__((format(printf, 4, 0)));
int log_sink_printf(log_sink_t* sink, uint32_t category, uint32_t level, const char* format, ...)
    __attribute__((format(printf, 4, 5)));

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif
