// A screen of another process, as its messages tell it.
#pragma once

#include "BrowserMessage.h"

#include <functional>

class BrowserJoinedScreen : public BrowserScreen
{
public:
    /// @param wanted called when somebody here wants what is newest, which the other process does not send before
    BrowserJoinedScreen(BrowserOrigin origin, std::function<void()> wanted)
        : BrowserScreen(std::move(origin)), m_Wanted(std::move(wanted))
    {
    }

    void Refresh() override;

    /// Takes a message of tiles in. @return false if it is broken; the screen is then as before.
    bool Apply(std::span<const uint32_t> message);

    /// Whether one more message is to be called drawn, so that its sender sends another.
    bool TakeDrawn();

private:
    const std::function<void()> m_Wanted;
    uint32_t m_Applied = 0;  ///< messages that nobody here has asked for more behind
    uint32_t m_Drawn = 0;    ///< messages that the sender may be told of
};
