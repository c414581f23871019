// What every connection works with. It outlives them.
#pragma once

class BrowserHub;
class BrowserPainter;
struct BrowserSettings;

struct BrowserHouse
{
    const BrowserSettings& m_Settings;
    BrowserHub& m_Hub;
    BrowserPainter& m_Painter;
};
