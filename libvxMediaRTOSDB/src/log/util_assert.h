// Preconditions and error reports of the library, switched by g_debug_level.
//
// The low byte of g_debug_level is the report level. Bit 30 also prints a report on standard
// output, bit 29 also appends it to the debug file on the card; every report goes to the system
// log.
#pragma once

// Ends the process with exit status 255 when the condition does not hold; a report level above 7
// reports it first.
#define UTIL_ASSERT(condition) \
    ((condition) ? (void)0 : utilAssertFailed(__FILE__, __func__, __LINE__, #condition))

// Reports a fixed message with its place when the report level is above 15; execution continues.
#define UTIL_DEBUG_ERROR(message) utilDebugError(__func__, __LINE__, message)

[[noreturn]] void utilAssertFailed(const char* path, const char* function, int line,
                                   const char* condition);
void utilDebugError(const char* function, int line, const char* message);
