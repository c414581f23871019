// What is measured of the driver as a DLL, through its entries. Each adds its rows to the report.
#pragma once

#include "BenchReport.h"

/// Loading and freeing the driver, beside its client library alone.
void BenchAttach(BenchReport& report);
/// Frames on their way to a web browser: their age, their bytes, what they cost the presenter.
void BenchBrowser(BenchReport& report);
/// A whole program beside the interposer's d3d9.dll.
void BenchInterposer(BenchReport& report);
/// Single calls, driver beside plain device.
void BenchCalls(BenchReport& report);
/// What the driver adds to a call, on a device that does nothing; the price of tracing; the memory of an idle device.
void BenchOverhead(BenchReport& report);
/// Flips without the driver's fixed pause, beside the readback that they cannot do without.
void BenchPresent(BenchReport& report);
/// The demo's scene, driver beside plain device.
void BenchScenes(BenchReport& report);
