#include "host/scenes/HostCardScene.h"

#include "host/runtime/HostDevice.h"
#include "host/scenes/HostCardLayout.h"

HostCardScene::HostCardScene() = default;
HostCardScene::~HostCardScene() = default;

namespace
{

void Paint(HostDevice& device, const HostResource& target, const HostCardLayers& layers)
{
    device.SetRenderTarget(target);
    for (const HostCardLayer& layer : layers)
        if (!layer.m_Rects.empty())  // none would stand for the whole target
            device.Clear(layer.m_Color, layer.m_Rects);
}

HostCardLayout LayoutOf(const HostResourceDescription& primary)
{
    return {primary.m_Width, primary.m_Height, primary.m_VidPnSourceId, primary.m_Rotation};
}

}  // namespace

void HostCardScene::Draw(HostDevice& device, const HostResource& primary, UINT frame)
{
    const HostResourceDescription& mode = primary.Description();
    const HostCardLayout layout = LayoutOf(mode);
    device.SetDepthStencil(nullptr);
    if (m_pCard == nullptr || m_pCard->Description().m_Width != mode.m_Width ||
        m_pCard->Description().m_Height != mode.m_Height || m_Rotation != mode.m_Rotation)
    {
        m_pCard = device.CreateRenderTarget(mode.m_Width, mode.m_Height);
        m_Rotation = mode.m_Rotation;
        Paint(device, *m_pCard, layout.Card());
    }
    device.Blt(*m_pCard, m_pCard->Rect(), primary, primary.Rect());
    Paint(device, primary, layout.Number(frame));
}

HostImage HostCardScene::Expected(UINT width, UINT height, UINT sourceId, D3DDDI_ROTATION rotation, UINT frame)
{
    const HostCardLayout layout(width, height, sourceId, rotation);
    HostImage image(width, height);
    for (const HostCardLayers& layers : {layout.Card(), layout.Number(frame)})
        for (const HostCardLayer& layer : layers)
            for (const RECT& rect : layer.m_Rects)
                image.Fill(rect, layer.m_Color);
    return image;
}
