// The routines behind copies and rotations that are there for several widths of vector registers, and which are used.
//
// A file for wider registers tells the compiler so function by function. Whatever it shares with other files, inline
// functions of headers above all, stays code for every CPU: the linker keeps one copy of those, no matter whose.
#pragma once

#include "output/UMDImgProcTurn.h"
#include "util/UMDCpu.h"

struct UMDImgProcKernels
{
    /// Turns of which all columns begin at the same place of a line.
    void (*TurnBlocks)(const UMDImgProcTurn& turn);
    /// Turns of which columns begin anywhere.
    void (*TurnColumns)(const UMDImgProcTurn& turn);
};

/// What is used: the best for this CPU from the driver's attach on, and since UMDImgProcLimit what that allows.
const UMDImgProcKernels& UMDImgProcBest();

/// Uses no wider registers than these, and those of the CPU at most. For tests and ./bench, which can reach every
/// kernel by it; the driver does not call it, and takes no setting for it, because no user has a use for slower ones.
/// @return what is used from now on.
UMDCpuIsa UMDImgProcLimit(UMDCpuIsa most);

void UMDImgProcTurnBlocksSse2(const UMDImgProcTurn& turn);
void UMDImgProcTurnColumnsSse2(const UMDImgProcTurn& turn);
void UMDImgProcTurnBlocksAvx2(const UMDImgProcTurn& turn);
void UMDImgProcTurnColumnsAvx2(const UMDImgProcTurn& turn);
/// For wider kernels, too: what is left of some columns that begin anywhere, behind their windows of 16 rows.
void UMDImgProcTurnEndsAvx2(const UMDImgProcTurn& turn, std::ptrdiff_t begin, std::ptrdiff_t end);
void UMDImgProcTurnColumnsAvx512(const UMDImgProcTurn& turn);
