// The pause that follows a failed exchange with the media database.
#pragma once

// Sleeps 100 ms.
void retryPause();
