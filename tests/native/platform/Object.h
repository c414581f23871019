// What a handle stands for.
#pragma once

struct Object
{
    virtual ~Object() = default;
    /// Without limit; nothing to wait for by itself.
    virtual void Wait() {}
};
