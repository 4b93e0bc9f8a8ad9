// Stands before the system's EGL in a process of Qt's "minimalegl" platform, so that a program
// draws on a graphics card that has no display: the display is the first device that EGL names,
// windows are buffers of their size. cmake/pack-bench makes a folder that loads it with LD_PRELOAD.

#define EGL_EGLEXT_PROTOTYPES
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <dlfcn.h>

#include <cstdio>
#include <vector>

namespace
{

constexpr EGLint WIDTH = 1280; // of the screen that there is not
constexpr EGLint HEIGHT = 800;

template <typename TFn> TFn FindNext(const char* pszName)
{
    return reinterpret_cast<TFn>(::dlsym(RTLD_NEXT, pszName));
}

template <typename TFn> TFn FindExtension(const char* pszName)
{
    return reinterpret_cast<TFn>(::eglGetProcAddress(pszName));
}

} // namespace

extern "C" __attribute__((visibility("default"))) EGLDisplay eglGetDisplay(EGLNativeDisplayType)
{
    const auto queryDevices = FindExtension<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    const auto getDisplay =
        FindExtension<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    EGLDeviceEXT device = nullptr;
    EGLint nDevices = 0;
    if (queryDevices == nullptr || getDisplay == nullptr ||
        queryDevices(1, &device, &nDevices) == EGL_FALSE || nDevices == 0)
    {
        std::fprintf(stderr, "card_display: EGL names no device\n");
        return EGL_NO_DISPLAY;
    }
    return getDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr);
}

// Configurations for buffers in place of windows.
extern "C" __attribute__((visibility("default"))) EGLBoolean eglChooseConfig(
    EGLDisplay display, const EGLint* pWanted, EGLConfig* pConfigs, EGLint nConfigs, EGLint* pCount)
{
    std::vector<EGLint> wanted;
    for (; pWanted != nullptr && *pWanted != EGL_NONE; pWanted += 2)
    {
        const bool bWindow = pWanted[0] == EGL_SURFACE_TYPE;
        wanted.push_back(pWanted[0]);
        wanted.push_back(bWindow ? (pWanted[1] & ~EGL_WINDOW_BIT) | EGL_PBUFFER_BIT : pWanted[1]);
    }
    wanted.push_back(EGL_NONE);
    static const auto s_Next = FindNext<decltype(&::eglChooseConfig)>("eglChooseConfig");
    return s_Next(display, wanted.data(), pConfigs, nConfigs, pCount);
}

extern "C" __attribute__((visibility("default"))) EGLSurface
eglCreateWindowSurface(EGLDisplay display, EGLConfig config, EGLNativeWindowType, const EGLint*)
{
    const EGLint aSize[] = {EGL_WIDTH, WIDTH, EGL_HEIGHT, HEIGHT, EGL_NONE};
    return ::eglCreatePbufferSurface(display, config, aSize);
}
