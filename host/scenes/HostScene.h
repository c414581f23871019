// What an output shows: drawn anew for every frame through the driver's entries.
#pragma once

#include <windows.h>

class HostDevice;
class HostResource;

class HostScene
{
public:
    virtual ~HostScene() = default;

    /// Draws one frame into a primary. The device's render target and states may hold anything before and after.
    virtual void Draw(HostDevice& device, const HostResource& primary, UINT frame) = 0;
};
