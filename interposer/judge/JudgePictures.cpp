#include "interposer/judge/JudgePictures.h"

#include "client/sample/SamplePicture.h"
#include "host/runtime/HostError.h"
#include "interposer/run/RunLedger.h"

#include <string>

namespace
{

// A program that never draws right would fill the disk.
constexpr LONG64 kKept = 100;

void Write(const std::wstring& name, HostImage image)
{
    const std::wstring path = std::wstring(RunOf().m_Pictures) + L"\\" + name + L".png";
    const DWORD error =
        SamplePictureWrite(path.c_str(), reinterpret_cast<BYTE*>(image.m_Pixels.data()), image.m_Width, image.m_Height);
    if (error != ERROR_SUCCESS)
        HostThrowSystemError("cannot write pictures", error);
}

}  // namespace

void JudgeKeepPictures(const HostImage& fromDriver, const HostImage& expected)
{
    if (*RunOf().m_Pictures == L'\0' || RunOf().m_Different >= kKept)
        return;
    const std::wstring frame = L"frame" + std::to_wstring(RunOf().m_Frames + 1);
    Write(frame + L"-driver", fromDriver);
    Write(frame + L"-platform", expected);
    if (fromDriver.m_Pixels.size() != expected.m_Pixels.size())
        return;
    HostImage difference = expected;
    for (size_t i = 0; i < difference.m_Pixels.size(); ++i)
        difference.m_Pixels[i] = fromDriver.m_Pixels[i] != expected.m_Pixels[i] ? 0xFFFFFF : 0;
    Write(frame + L"-difference", difference);
}
