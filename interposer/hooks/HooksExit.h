// The end of the process.
#pragma once

/// From now on a process that ends by itself first draws what was posted to the driver's thread. Any thread may call,
/// any number of times.
void HooksExit();
