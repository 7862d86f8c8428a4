// The camera's model number, on which some file naming rules depend.
#pragma once

extern "C" {
#pragma GCC visibility push(default)

// Returns the camera's model number, 0 to 255. It is read once from the settings service and kept;
// while the service does not give it, the number is 30 and the next call asks again.
[[nodiscard]] int csiGetModelNumber(void);

// Returns 1 when the model numbers the chapters of a chaptered video from 1, else 0.
[[nodiscard]] int usesOneBasedChapters(void);

#pragma GCC visibility pop
}
