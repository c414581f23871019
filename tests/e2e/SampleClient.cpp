#include "SampleClient.h"

#include <vector>

namespace tesslo::test
{

namespace
{

constexpr UINT kRowPadding = 3;  // pixels
constexpr UINT kGarbage = 0xA5000000;

}  // namespace

SampleClientConnection::SampleClientConnection(const SampleClient& client, UINT source)
    : m_Client(client), m_Source(source), m_bOpen(client.Plug(&m_pSlot, source))
{
}

SampleClientConnection::~SampleClientConnection()
{
    Close();
}

bool SampleClientConnection::Send(const HostImage& image)
{
    const UINT pitch = image.m_Width + kRowPadding;
    std::vector<UINT> bits(size_t{pitch} * image.m_Height, 0x5A5A5A5A);
    for (UINT y = 0; y < image.m_Height; ++y)
        for (UINT x = 0; x < image.m_Width; ++x)
            bits[size_t{y} * pitch + x] = image.At(x, y) | kGarbage;
    const TessloVirtualMonitorFrame frame = {0, m_Source, image.m_Width, image.m_Height, pitch * 4, 0, bits.data()};
    return m_Client.Update(&m_pSlot, &frame);
}

void SampleClientConnection::Close()
{
    if (m_bOpen)
        m_Client.Unplug(&m_pSlot, m_Source);
    m_bOpen = false;
}

}  // namespace tesslo::test
