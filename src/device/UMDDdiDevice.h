// The device object: one for every device that the runtime creates on the virtual adapter.
//
// Its address is the device handle that the runtime holds. The adapter owns it. Every method runs on the runtime's
// thread; state, draws and blits go straight to the delegated device. Each method traces its entry and its success,
// and passes the delegated device's and the runtime's own failure codes through.
#pragma once

#include "ddi/ddi.h"
#include "gpu/UMDThreadGpuD3D9.h"
#include "output/UMDThreadFrameBuffer.h"

class UMDAdapter;
class UMDRscBase;
class UMDRscRenderTargetCapable;
class UMDRscVertexBuffer;

/// Video-present sources of a device; fixed.
inline constexpr UINT UMD_VIDPN_SOURCE_COUNT = 6;

class UMDDdiDevice
{
public:
    /// @param hDevice    the runtime's handle, first argument of every callback.
    /// @param interface_ accepted and not kept.
    /// @param version    the interface version that the adapter was opened with.
    /// @param pAdapter   the owner; only its address is kept.
    /// @param hRTAdapter the runtime's handle of the adapter, first argument of an escape.
    /// @param pCallbacks copied whole.
    UMDDdiDevice(HANDLE hDevice, UINT interface_, UINT version, UMDAdapter* pAdapter, HANDLE hRTAdapter,
        const D3DDDI_DEVICECALLBACKS* pCallbacks);
    ~UMDDdiDevice();

    UMDDdiDevice(const UMDDdiDevice&) = delete;
    UMDDdiDevice& operator=(const UMDDdiDevice&) = delete;

    // Life: UMDDdiDevice.cpp.
    bool Initialize();
    bool CreateContext();
    void DestroyContext();
    bool CreateThreads();
    void DestroyThreads();
    HRESULT InterFrameBufferThreadsStart();
    HRESULT InterFrameBufferThreadsStop();

    /// The delegated device, null while there is none. Borrowed.
    IDirect3DDevice9Ex* GetDevice() const { return m_ThreadGpuD3D9.GetDevice(); }
    /// The runtime's handle of this device.
    HANDLE RuntimeDevice() const { return m_hDevice; }
    const D3DDDI_DEVICECALLBACKS& Callbacks() const { return m_d3dCallbacks; }

    // Pipeline state: UMDDdiDeviceState.cpp, UMDDdiDeviceStream.cpp, UMDDdiDeviceShader.cpp.
    HRESULT SetRenderState(const D3DDDIARG_RENDERSTATE* pRenderState);
    HRESULT SetTextureStageState(const D3DDDIARG_TEXTURESTAGESTATE* pTextureStageState);
    HRESULT SetTexture(UINT stage, HANDLE hTexture);
    HRESULT SetRenderTarget(const D3DDDIARG_SETRENDERTARGET* pSetRT);
    HRESULT SetDepthStencil(const D3DDDIARG_SETDEPTHSTENCIL* pSetDepthStencil);
    HRESULT SetViewport(const D3DDDIARG_VIEWPORTINFO* pViewport);
    HRESULT SetScissorRect(const RECT* pRect);
    HRESULT SetTransform(const D3DDDIARG_SETTRANSFORM* pTransform);
    HRESULT SetClipPlane(const D3DDDIARG_SETCLIPPLANE* pClipPlane);
    HRESULT ValidateDevice(D3DDDIARG_VALIDATETEXTURESTAGESTATE* pValidate);
    HRESULT SetStreamSource(const D3DDDIARG_SETSTREAMSOURCE* pSetStreamSource);
    HRESULT SetStreamSourceUM(const D3DDDIARG_SETSTREAMSOURCEUM* pSetUMStream, const void* pData);
    HRESULT SetIndices(const D3DDDIARG_SETINDICES* pSetIndices);
    HRESULT CreatePixelShader(D3DDDIARG_CREATEPIXELSHADER* pCreate, const UINT* pCode);
    HRESULT DeletePixelShader(HANDLE hPixelShader);
    HRESULT SetPixelShader(HANDLE hPixelShader);
    HRESULT SetPixelShaderConst(const D3DDDIARG_SETPIXELSHADERCONST* pSetConst, const FLOAT* pData);
    HRESULT SetPixelShaderConstI(const D3DDDIARG_SETPIXELSHADERCONSTI* pSetConst, const INT* pData);
    HRESULT SetPixelShaderConstB(const D3DDDIARG_SETPIXELSHADERCONSTB* pSetConst, const BOOL* pData);
    HRESULT CreateVertexShaderFunc(D3DDDIARG_CREATEVERTEXSHADERFUNC* pCreate, const UINT* pCode);
    HRESULT DeleteVertexShaderFunc(HANDLE hVertexShaderFunc);
    HRESULT SetVertexShaderFunc(HANDLE hVertexShaderFunc);
    HRESULT CreateVertexShaderDecl(D3DDDIARG_CREATEVERTEXSHADERDECL* pCreate, const D3DDDIVERTEXELEMENT* pElements);
    HRESULT DeleteVertexShaderDecl(HANDLE hVertexShaderDecl);
    HRESULT SetVertexShaderDecl(HANDLE hVertexShaderDecl);
    HRESULT SetVertexShaderConst(const D3DDDIARG_SETVERTEXSHADERCONST* pSetConst, const void* pData);

    // Operations with a fixed answer: UMDDdiDeviceFixed.cpp.
    HRESULT UpdateWInfo(const D3DDDIARG_WINFO* pWInfo);
    HRESULT SetZRange(const D3DDDIARG_ZRANGE* pZRange);
    HRESULT SetStreamSourceFreq(const D3DDDIARG_SETSTREAMSOURCEFREQ* pFreq);
    HRESULT SetConvolutionKernelMono(const D3DDDIARG_SETCONVOLUTIONKERNELMONO* pKernel);
    HRESULT ComposeRects(const D3DDDIARG_COMPOSERECTS* pComposeRects);
    HRESULT MultiplyTransform(const D3DDDIARG_MULTIPLYTRANSFORM* pTransform);
    HRESULT SetMaterial(const D3DDDIARG_SETMATERIAL* pMaterial);
    HRESULT SetLight(const D3DDDIARG_SETLIGHT* pSetLight, const D3DDDI_LIGHT* pLight);
    HRESULT CreateLight(const D3DDDIARG_CREATELIGHT* pCreateLight);
    HRESULT DestroyLight(const D3DDDIARG_DESTROYLIGHT* pDestroyLight);
    HRESULT GetInfo(UINT infoId, void* pInfo, UINT infoSize);
    HRESULT GenerateMipSubLevels(const D3DDDIARG_GENERATEMIPSUBLEVELS* pGenerate);
    HRESULT DepthFill(const D3DDDIARG_DEPTHFILL* pDepthFill);
    HRESULT QueryResourceResidency(const D3DDDIARG_QUERYRESOURCERESIDENCY* pQuery);

    // Queries, which are all refused: UMDDdiDeviceQuery.cpp.
    HRESULT CreateFence();
    HRESULT CreateQuery(D3DDDIARG_CREATEQUERY* pCreateQuery);
    HRESULT DeleteQuery(HANDLE hQuery);
    HRESULT IssueQuery(const D3DDDIARG_ISSUEQUERY* pIssueQuery);
    HRESULT GetQueryData(const D3DDDIARG_GETQUERYDATA* pGetQueryData);

    // Draws: UMDDdiDeviceDraw.cpp.
    HRESULT DrawPrimitive(const D3DDDIARG_DRAWPRIMITIVE* pDraw);
    HRESULT DrawPrimitive2(const D3DDDIARG_DRAWPRIMITIVE2* pDraw);
    HRESULT DrawIndexedPrimitive(const D3DDDIARG_DRAWINDEXEDPRIMITIVE* pDraw);
    HRESULT DrawIndexedPrimitive2(const D3DDDIARG_DRAWINDEXEDPRIMITIVE2* pDraw, UINT indexSize, const void* pIndices);

    // Blits, fills and clears: UMDDdiDeviceBlt.cpp.
    HRESULT Blt(const D3DDDIARG_BLT* pBlt);
    HRESULT TexBlt(const D3DDDIARG_TEXBLT* pTexBlt);
    HRESULT BufBlt(const D3DDDIARG_BUFFERBLT* pBufBlt);
    HRESULT ColorFill(const D3DDDIARG_COLORFILL* pColorFill);
    HRESULT Clear(const D3DDDIARG_CLEAR* pClear, UINT rectCount, const RECT* pRects);

    // End of a frame: UMDDdiDevicePresent.cpp.
    HRESULT Present(const D3DDDIARG_PRESENT* pPresent);
    HRESULT Flush();
    HRESULT SetDisplayMode(const D3DDDIARG_SETDISPLAYMODE* pSetDisplayMode);

    // Resources: UMDDdiDeviceResource.cpp. DestroyResource answers E_FAIL even when it succeeded.
    HRESULT CreateResource(D3DDDIARG_CREATERESOURCE* pCreate);
    HRESULT OpenResource(D3DDDIARG_OPENRESOURCE* pOpen);
    HRESULT Lock(D3DDDIARG_LOCK* pLock);
    HRESULT Unlock(const D3DDDIARG_UNLOCK* pUnlock);
    HRESULT DestroyResource(HANDLE hResource);

    // Video process devices: UMDDdiDeviceVideoProcess.cpp. E_FAIL for a null handle.
    HRESULT DeviceVideoProcessCreate(D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pCreate);
    /// Releases the video process device's DXVA2 objects and frees it.
    HRESULT DeviceVideoProcessDestroy(HANDLE hVideoProcess);
    HRESULT VideoProcessBeginFrame(HANDLE hVideoProcess);
    HRESULT VideoProcessEndFrame(const D3DDDIARG_VIDEOPROCESSENDFRAME* pEndFrame);
    HRESULT VideoProcessSetRenderTarget(const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pSetRT);
    HRESULT VideoProcessBlt(const D3DDDIARG_VIDEOPROCESSBLT* pBlt);

private:
    /// Asks the kernel-mode driver which video-present source belongs to an index; the index itself if it refuses.
    UINT InternalQueryVidPnSourceId(UINT index);
    HRESULT InternalProcessPresentFLIP(UMDRscRenderTargetCapable* pResource);
    /// Stops all frame-buffer threads and forgets every primary if the resource is one.
    void InternalForgetPrimary(HANDLE hResource);
    /// Unbinds stream 0 if the resource is its vertex buffer.
    void InternalForgetStreamSource0(const UMDRscBase* pResource);
    /// Takes the runtime's memory for the commands to come: buffer and lists, each with its size.
    void InternalTakeCommandBuffer(void* pCommandBuffer, UINT commandBufferSize, D3DDDI_ALLOCATIONLIST* pAllocationList,
        UINT allocationListSize, D3DDDI_PATCHLOCATIONLIST* pPatchLocationList, UINT patchLocationListSize);

    struct SourceReserved
    {
        UINT Reserved[4];
    };

    HANDLE m_hDevice;
    UINT m_Kind;  ///< always 5
    UINT m_Version;
    D3DDDI_DEVICECALLBACKS m_d3dCallbacks;
    UMDAdapter* m_pAdapter;  ///< borrowed; tells who looks at a device in a debugger whose it is
    HANDLE m_hRTAdapter;     ///< the runtime's handle of the adapter
    UMDThreadGpuD3D9 m_ThreadGpuD3D9;
    HANDLE m_hContext;  ///< kernel-mode context, null when there is none

    // The current command buffer and its lists, the runtime's memory; null until CreateContext.
    void* m_pCommandBuffer;
    UINT m_CommandBufferSize;  ///< bytes
    D3DDDI_ALLOCATIONLIST* m_pAllocationList;
    UINT m_AllocationListSize;  ///< entries
    D3DDDI_PATCHLOCATIONLIST* m_pPatchLocationList;
    UINT m_PatchLocationListSize;  ///< entries

    SourceReserved m_SourceReserved[UMD_VIDPN_SOURCE_COUNT];
    HANDLE m_hPrimaryResource[UMD_VIDPN_SOURCE_COUNT];  ///< resource last flipped to the source, null when none

    UINT m_StreamSource0Offset;  ///< bytes
    UINT m_StreamSource0Stride;  ///< bytes
    /// Stream 0 in user memory, or the system memory of its buffer once an indexed draw has cached it.
    const BYTE* m_pStreamSource0VertexBufferPointer;
    UMDRscVertexBuffer* m_pStreamSource0VertexBufferResource;  ///< borrowed; null when stream 0 is user memory

    UMDThreadFrameBuffer m_ThreadFrameBuffer[UMD_VIDPN_SOURCE_COUNT];
    UINT m_SourceRotation[UMD_VIDPN_SOURCE_COUNT];  ///< D3DDDI_ROTATION of the source's newest flip
};

/// Device handles become devices here and nowhere else.
inline UMDDdiDevice& ToDevice(HANDLE hDevice)
{
    return *static_cast<UMDDdiDevice*>(hDevice);
}
