#include "BrowserHub.h"

void BrowserHub::Add(std::shared_ptr<BrowserScreen> pScreen)
{
    m_Screens.push_back({m_NextId++, std::move(pScreen)});
    TellScreens();
}

void BrowserHub::Remove(const BrowserScreen* pScreen)
{
    std::erase_if(m_Screens, [&](const Entry& entry) { return entry.m_pScreen.get() == pScreen; });
    TellScreens();
}

std::shared_ptr<BrowserScreen> BrowserHub::Find(uint32_t id) const
{
    for (const Entry& entry : m_Screens)
        if (entry.m_Id == id)
            return entry.m_pScreen;
    return nullptr;
}

void BrowserHub::Watch(BrowserWatcher* pWatcher)
{
    m_Watchers.push_back(pWatcher);
}

void BrowserHub::Unwatch(BrowserWatcher* pWatcher)
{
    std::erase(m_Watchers, pWatcher);
}

void BrowserHub::TellFrame()
{
    for (BrowserWatcher* pWatcher : m_Watchers)
        pWatcher->OnFrame();
}

void BrowserHub::TellScreens()
{
    for (BrowserWatcher* pWatcher : m_Watchers)
        pWatcher->OnScreens();
}
