#include "tools/client_check/CheckTable.h"

#include "tools/client_check/checks/CheckCalls.h"
#include "tools/client_check/checks/CheckCosts.h"
#include "tools/client_check/checks/CheckDevice.h"
#include "tools/client_check/checks/CheckEnds.h"
#include "tools/client_check/checks/CheckPixels.h"
#include "tools/client_check/checks/CheckSizes.h"

#include <algorithm>

namespace
{

constexpr CheckRow kRows[] = {
    {"exports", "loads the library and looks its exports up", "Export the three functions by their plain names.",
        CheckExports},
    {"order", "Plug, frames, Unplug; Plug and Unplug without a frame; each of six sources in its turn",
        "Answer true, return, and let no exception leave an export, however often a connection is opened; do not end "
        "the thread.",
        CheckOrder},
    {"sources", "six sources at once, and two connections of one source",
        "Keep what belongs to a connection behind its slot, and guard what connections share: each has its own thread.",
        CheckSources},
    {"sizes", "1x1 to 7680x4320, odd widths", "Take width and height from each frame; any from 1 on may come.",
        CheckSizes},
    {"rotations", "monitors that hang on their side, and are turned by 90, 180 and 270 degrees",
        "Take width and height as they come: the frames of a turned monitor are higher than wide.", CheckRotations},
    {"resize", "the size changes from frame to frame of one connection",
        "Compare each frame's size with the last one's, and make what depends on it anew.", CheckResize},
    {"replug", "a source is closed and opened again while others go on",
        "Free in Unplug what belongs to that connection alone; others go on, and the source may come back.",
        CheckReplug},
    {"pitch", "rows with something between them that must not be read",
        "Go from row to row by Pitch, and read Width * 4 bytes of each.", CheckPitch},
    {"guard", "a page without access behind the last pixel",
        "Read Height rows and no byte more: mind loops that take 16 or 32 bytes at once.", CheckGuard},
    {"const", "pixels without access for writing", "Copy the pixels before you change them: they are the driver's.",
        CheckConst},
    {"lifetime", "pixels and record are overwritten and taken away when Update returns",
        "Copy in Update what you need: neither pBits nor the record may be used behind it.", CheckLifetime},
    {"slots", "each connection's slot is elsewhere, and taken away with it",
        "Keep no address of a slot: it is each call's argument. Store one pointer in it and nothing beside it.",
        CheckSlots},
    {"device", "the first reserved export, if there is one: a device for each of two threads, or none",
        "Store a device that CreateDeviceEx made with D3DCREATE_MULTITHREADED, with a reference for each call that "
        "answers true; or answer false.",
        CheckDevice},
    {"notice", "the second reserved export, if there is one: presents, while frames go on",
        "Export it beside the first. Both objects are lent for the call: release what you have added, and no more.",
        CheckNotice},
    {"exit", "the process ends without Unplug",
        "Wait for nothing in DllMain, and take no lock there: your threads were ended wherever they were.", CheckExit},
    {"time", "how long Update takes", "Copy in Update and return; compress, send and write on a thread of your own.",
        CheckTime},
    {"leaks", "memory, handles and threads over many connections",
        "Free in Unplug all that Plug and Update have made: memory, handles, threads.", CheckLeaks},
    {"unload", "the library is freed and loaded again",
        "End your threads in Unplug and wait for them there; hold no reference of your own library behind it.",
        CheckUnload},
    {"loads", "memory, handles and threads over many loads of the library",
        "Give back behind the last Unplug, or in DllMain, all that a load has made. The C++ library of mingw-w64 keeps a "
        "block of each: call __gnu_cxx::__freeres() at DLL_PROCESS_DETACH.",
        CheckLoads},
};

}  // namespace

std::span<const CheckRow> CheckTable()
{
    return kRows;
}

const CheckRow* CheckFindRow(const std::string& name)
{
    const auto* pFound = std::ranges::find(kRows, name, &CheckRow::m_pName);
    return pFound == std::end(kRows) ? nullptr : pFound;
}
