// The screens that there are, and whoever wants to be told of them. The library's own thread alone.
#pragma once

#include "BrowserScreen.h"

/// Is told of frames and screens while it is with the hub. May neither come nor go during a call.
class BrowserWatcher
{
public:
    virtual ~BrowserWatcher() = default;
    virtual void OnFrame() = 0;    ///< some screen has something newer
    virtual void OnScreens() = 0;  ///< a screen came or went
};

class BrowserHub
{
public:
    struct Entry
    {
        uint32_t m_Id;  ///< counts up: no screen gets the number of one that went
        std::shared_ptr<BrowserScreen> m_pScreen;
    };

    void Add(std::shared_ptr<BrowserScreen> pScreen);
    void Remove(const BrowserScreen* pScreen);
    const std::vector<Entry>& Screens() const { return m_Screens; }
    std::shared_ptr<BrowserScreen> Find(uint32_t id) const;

    void Watch(BrowserWatcher* pWatcher);
    void Unwatch(BrowserWatcher* pWatcher);
    size_t Watchers() const { return m_Watchers.size(); }

    void TellFrame();

private:
    void TellScreens();

    std::vector<Entry> m_Screens;
    std::vector<BrowserWatcher*> m_Watchers;  ///< not owned
    uint32_t m_NextId = 1;
};
