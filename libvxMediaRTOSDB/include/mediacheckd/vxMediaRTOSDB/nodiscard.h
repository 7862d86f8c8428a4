// Marks functions whose result tells of failure, in C and in C++.
#pragma once

#ifdef __cplusplus
#define MEDIACHECKD_NODISCARD [[nodiscard]]
#else
#define MEDIACHECKD_NODISCARD __attribute__((warn_unused_result))
#endif
