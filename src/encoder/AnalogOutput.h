#pragma once

/** Whether the analog video output can run: the first encoder is on, and the two others are off. */
[[nodiscard]] bool isAnalogOutputPossible();
