#include "ombrel/platform/opengl/GLContext.h"

#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <algorithm>
#include <array>
#include <cassert>
#include <string_view>
#include <unistd.h>

#define OMBREL_EGL_FUNCTIONS(X)                                                                                        \
    X(BindAPI)                                                                                                         \
    X(ChooseConfig)                                                                                                    \
    X(CreateContext)                                                                                                   \
    X(DestroyContext)                                                                                                  \
    X(GetCurrentContext)                                                                                               \
    X(GetCurrentDisplay)                                                                                               \
    X(GetCurrentSurface)                                                                                               \
    X(GetDisplay)                                                                                                      \
    X(GetError)                                                                                                        \
    X(GetProcAddress)                                                                                                  \
    X(Initialize)                                                                                                      \
    X(MakeCurrent)                                                                                                     \
    X(QueryAPI)                                                                                                        \
    X(QueryString)

namespace ombrel {
namespace {

/// The functions of EGL, which stay where they are once the library is open.
struct EGLFunctions {
    explicit EGLFunctions(GLLibrary const& library)
    {
#define OMBREL_LOAD(name) Set(name, library.Find("egl" #name), "egl" #name);
        OMBREL_EGL_FUNCTIONS(OMBREL_LOAD)
#undef OMBREL_LOAD
    }
    template <typename Pointer> void Set(Pointer& entry, GLLibrary::Function function, char const* name)
    {
        if (!function)
            throw Error(Error::Kind::Resource,
                std::string("3D pictures need EGL 1.4, and the one installed has no ") + name + " (" + kOpenGLPackages
                    + ")");
        entry = reinterpret_cast<Pointer>(function);
    }
    /// Null when the library has no such extension.
    template <typename Pointer> Pointer Extension(char const* name) const
    {
        return reinterpret_cast<Pointer>(GetProcAddress(name));
    }

// A declared name takes no parentheses.
#define OMBREL_DECLARE(name) decltype(&::egl##name) name = nullptr; // NOLINT(bugprone-macro-parentheses)
    OMBREL_EGL_FUNCTIONS(OMBREL_DECLARE)
#undef OMBREL_DECLARE
};

/// Whether a list of names, separated by blanks, has one.
bool Has(char const* list, std::string_view name)
{
    std::string_view rest = list ? list : "";
    while (!rest.empty()) {
        auto const end = std::min(rest.find(' '), rest.size());
        if (rest.substr(0, end) == name)
            return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

/// What the display was told before us, to be put back.
struct HostState {
    EGLenum api = EGL_OPENGL_ES_API;
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface draw = EGL_NO_SURFACE;
    EGLSurface read = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
};

HostState GetHostState(EGLFunctions const& egl)
{
    return { egl.QueryAPI(), egl.GetCurrentDisplay(), egl.GetCurrentSurface(EGL_DRAW), egl.GetCurrentSurface(EGL_READ),
        egl.GetCurrentContext() };
}

void PutBack(EGLFunctions const& egl, HostState const& host, EGLDisplay ours)
{
    if (host.context == EGL_NO_CONTEXT) {
        egl.MakeCurrent(ours, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        egl.BindAPI(host.api);
    } else {
        egl.BindAPI(host.api);
        egl.MakeCurrent(host.display, host.draw, host.read, host.context);
    }
}

/// Whether this user may use the device, as far as that can be told: drivers that fail write to standard error.
bool IsOpen(EGLFunctions const& egl, PFNEGLQUERYDEVICESTRINGEXTPROC queryString, EGLDeviceEXT device, char const* has)
{
    if (!Has(has, "EGL_EXT_device_drm_render_node"))
        return true;
    char const* const node = queryString(device, EGL_DRM_RENDER_NODE_FILE_EXT);
    (void)egl.GetError();
    return node && access(node, R_OK | W_OK) == 0;
}

/// The displays that need no window, the best first: graphics cards, then what draws in software.
std::vector<EGLDisplay> FindDisplays(EGLFunctions const& egl)
{
    std::vector<EGLDisplay> displays;
    char const* const has = egl.QueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    auto const getDisplay = egl.Extension<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    auto const add = [&](EGLDisplay display) {
        if (display != EGL_NO_DISPLAY)
            displays.push_back(display);
    };
    std::vector<EGLDeviceEXT> software;
    auto const queryDevices = egl.Extension<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    auto const queryString = egl.Extension<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    if (getDisplay && queryDevices && queryString && Has(has, "EGL_EXT_platform_device")) {
        EGLDeviceEXT devices[16];
        EGLint count = 0;
        if (!queryDevices(static_cast<EGLint>(std::size(devices)), devices, &count))
            count = 0;
        for (EGLint i = 0; i < count; ++i) {
            char const* const deviceHas = queryString(devices[i], EGL_EXTENSIONS);
            if (Has(deviceHas, "EGL_MESA_device_software"))
                software.push_back(devices[i]);
            else if (IsOpen(egl, queryString, devices[i], deviceHas))
                add(getDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr));
        }
    }
    if (getDisplay && Has(has, "EGL_MESA_platform_surfaceless"))
        add(getDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr));
    for (EGLDeviceEXT const device : software)
        add(getDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
    if (displays.empty())
        add(egl.GetDisplay(EGL_DEFAULT_DISPLAY));
    return displays;
}

/// A context with everything that OpenGL ever had (a core profile lacks half of what is used here); none when the
/// display cannot have one without a window.
EGLContext CreateOn(EGLFunctions const& egl, EGLDisplay display)
{
    if (!egl.Initialize(display, nullptr, nullptr))
        return EGL_NO_CONTEXT;
    char const* const has = egl.QueryString(display, EGL_EXTENSIONS);
    if (!Has(has, "EGL_KHR_surfaceless_context") || !egl.BindAPI(EGL_OPENGL_API))
        return EGL_NO_CONTEXT;
    // Pictures are framebuffers of our own: the configuration says nothing of them.
    EGLint const wanted[] = { EGL_SURFACE_TYPE, 0, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE };
    EGLConfig config = EGL_NO_CONFIG_KHR;
    EGLint count = 0;
    if (!egl.ChooseConfig(display, wanted, &config, 1, &count) || count < 1) {
        if (!Has(has, "EGL_KHR_no_config_context"))
            return EGL_NO_CONTEXT;
        config = EGL_NO_CONFIG_KHR;
    }
    return egl.CreateContext(display, config, EGL_NO_CONTEXT, nullptr);
}

} // namespace

struct GLContext::Display {
    explicit Display(Libraries const& libraries)
        : egl(GLLibrary({ libraries.egl }))
        , openGL({ libraries.openGL, "libGL.so.1" })
    {
    }

    EGLFunctions egl;
    GLLibrary openGL;
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    HostState host {};
};

GLContext::GLContext(Libraries const& libraries)
    : m_libraries(libraries)
{
}

GLContext::~GLContext()
{
    if (m_display && m_display->context != EGL_NO_CONTEXT)
        m_display->egl.DestroyContext(m_display->display, m_display->context);
}

GLContext& GLContext::Process()
{
    // Never destroyed: the driver may have ended before what is static is.
    static GLContext& context = *new GLContext(Libraries {});
    return context;
}

void GLContext::Enter()
{
    m_lock.lock();
    try {
        if (m_depth == 0)
            MakeCurrent();
        ++m_depth;
    } catch (...) {
        m_lock.unlock();
        throw;
    }
}

void GLContext::Leave() noexcept
{
    bool const isLast = m_depth == 1;
    if (isLast) {
        if (m_display->context != EGL_NO_CONTEXT)
            DeleteReleased();
        PutBack(m_display->egl, m_display->host, m_display->display);
    }
    --m_depth;
    m_lock.unlock();
    if (!isLast)
        return;
    // Who released something in between found the lock taken.
    bool isAnythingLeft = false;
    {
        std::lock_guard const lock(m_releasedLock);
        isAnythingLeft = !m_released.empty();
    }
    if (isAnythingLeft)
        ReleaseIfFree();
}

void GLContext::Release(Kind kind, unsigned int name, std::uint64_t generation) noexcept
{
    try {
        std::lock_guard const lock(m_releasedLock);
        m_released.push_back({ kind, name, generation });
    } catch (std::bad_alloc const&) {
        // The driver keeps it until the process ends.
        return;
    }
    ReleaseIfFree();
}

void GLContext::ReleaseIfFree() noexcept
{
    std::unique_lock const lock(m_lock, std::try_to_lock);
    if (!lock)
        return;
    if (m_depth > 0) {
        DeleteReleased();
        return;
    }
    try {
        Enter();
    } catch (Error const&) {
        // It waits for who can enter.
        return;
    }
    Leave();
}

void GLContext::DeleteReleased() noexcept
{
    std::vector<Released> released;
    {
        std::lock_guard const lock(m_releasedLock);
        released.swap(m_released);
    }
    for (auto const& each : released) {
        if (each.generation != m_generation)
            continue;
        switch (each.kind) {
        case Kind::Texture:
            gl::DeleteTextures(1, &each.name);
            break;
        case Kind::Buffer:
            gl::DeleteBuffers(1, &each.name);
            break;
        case Kind::Framebuffer:
            gl::DeleteFramebuffers(1, &each.name);
            break;
        case Kind::Renderbuffer:
            gl::DeleteRenderbuffers(1, &each.name);
            break;
        case Kind::Program:
            gl::DeleteProgram(each.name);
            break;
        }
    }
}

void GLContext::Lose()
{
    assert(m_depth > 0);
    auto& display = *m_display;
    display.egl.MakeCurrent(display.display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    display.egl.DestroyContext(display.display, display.context);
    display.context = EGL_NO_CONTEXT;
}

void GLContext::MakeCurrent()
{
    if (m_failure)
        throw Error(Error::Kind::Resource, *m_failure);
    if (!m_display || m_display->context == EGL_NO_CONTEXT) {
        Create();
        return;
    }
    auto& [egl, openGL, display, context, host] = *m_display;
    host = GetHostState(egl);
    egl.BindAPI(EGL_OPENGL_API);
    if (!egl.MakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
        bool const isInTheWay = egl.GetError() == EGL_BAD_ACCESS;
        egl.BindAPI(host.api);
        if (isInTheWay)
            throw Error(Error::Kind::Resource,
                "3D pictures cannot be drawn in a thread that has an OpenGL context of a window system in use");
        // A driver that was reset loses its contexts.
        egl.DestroyContext(display, context);
        context = EGL_NO_CONTEXT;
        Create();
        return;
    }
}

void GLContext::Create()
{
    try {
        if (!m_display)
            m_display = std::make_unique<Display>(m_libraries);
        LoadGLU();
        auto& [egl, openGL, display, context, host] = *m_display;
        host = GetHostState(egl);
        for (EGLDisplay const each : FindDisplays(egl)) {
            context = CreateOn(egl, each);
            if (context == EGL_NO_CONTEXT)
                continue;
            display = each;
            if (egl.MakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
                LoadGL(openGL, egl.GetProcAddress);
                GLint version = 0;
                gl::GetIntegerv(GL_MAJOR_VERSION, &version);
                if (version >= 3)
                    break;
                egl.MakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
            }
            egl.DestroyContext(display, context);
            context = EGL_NO_CONTEXT;
        }
        if (context == EGL_NO_CONTEXT) {
            egl.BindAPI(host.api);
            throw Error(Error::Kind::Resource,
                std::string("3D pictures need OpenGL 3.0, and no driver of it was found that draws without a window (")
                    + kOpenGLPackages + ")");
        }
    } catch (Error const& error) {
        m_failure = error.what();
        throw;
    }
    ++m_generation;
    GLint sides[4] = { 1, 1, 1, 1 };
    gl::GetIntegerv(GL_MAX_TEXTURE_SIZE, &sides[0]);
    gl::GetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &sides[1]);
    gl::GetIntegerv(GL_MAX_VIEWPORT_DIMS, &sides[2]);
    m_longestSide = *std::min_element(std::begin(sides), std::end(sides));
    auto const* const renderer = reinterpret_cast<char const*>(gl::GetString(GL_RENDERER));
    std::string_view const name = renderer ? renderer : "";
    m_isSoftware = std::ranges::any_of(std::array { "llvmpipe", "softpipe", "swr" },
        [&](char const* software) { return name.find(software) != std::string_view::npos; });
}

} // namespace ombrel
