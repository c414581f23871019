// What a handle stands for.
#pragma once

struct Object
{
    virtual ~Object() = default;
};
