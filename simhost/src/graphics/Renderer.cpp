// The headless renderer: a surfaceless EGL display, a desktop-GL
// compatibility context (the plug-in draws with glBegin, client arrays and the
// texture environment) and an off-screen framebuffer of the screen's size.
// Mesa's llvmpipe gives all of that on any machine, with no display server.
#define GL_GLEXT_PROTOTYPES 1
#define EGL_EGLEXT_PROTOTYPES 1
#include "graphics/GraphicsHooks.h"

#ifdef SIMHOST_NO_RENDERING
#include "graphics/NoEgl.h"
#else
#include <EGL/egl.h>
#include <EGL/eglext.h>
#endif
#include <GL/gl.h>
#include <GL/glext.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace simhost::gfx {
namespace {

constexpr int kDefaultWidthPx = 1024;
constexpr int kDefaultHeightPx = 768;
constexpr int kMaxFramePx = 8192;     // larger frames are refused (memory)
constexpr double kNearClipM = 0.5;    // nearest visible distance, metres
constexpr double kFarClipM = 60000.0; // farthest visible distance, metres
constexpr double kPi = 3.14159265358979323846;

using FboGen = void (*)(GLsizei, GLuint*);
using FboBind = void (*)(GLenum, GLuint);
using FboDelete = void (*)(GLsizei, const GLuint*);
using FboStorage = void (*)(GLenum, GLenum, GLsizei, GLsizei);
using FboAttach = void (*)(GLenum, GLenum, GLenum, GLuint);
using FboStatus = GLenum (*)(GLenum);

/// Everything the renderer owns; one per process.
struct Renderer {
    bool enabled = false;
    bool tried = false; ///< context creation attempted (it is not retried after a failure)
    std::string reason = "rendering is off";
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    // Framebuffer entry points, looked up once (core since GL 3.0).
    FboGen genFramebuffers = nullptr, genRenderbuffers = nullptr;
    FboBind bindFramebuffer = nullptr, bindRenderbuffer = nullptr;
    FboDelete deleteFramebuffers = nullptr, deleteRenderbuffers = nullptr;
    FboStorage renderbufferStorage = nullptr;
    FboAttach framebufferRenderbuffer = nullptr;
    FboStatus checkFramebufferStatus = nullptr;
    GLuint fbo = 0, colour = 0, depth = 0;
    int fboWidth = 0, fboHeight = 0; ///< size of the allocated framebuffer, pixels
    int width = kDefaultWidthPx;     ///< size of the current/last frame, pixels
    int height = kDefaultHeightPx;
    bool haveFrame = false; ///< a frame was finished and can be read
    double refLatDeg = 0, refLonDeg = 0;
};

Renderer& r() {
    static Renderer instance;
    return instance;
}

template <typename F> bool lookUp(F& out, const char* name) {
    out = reinterpret_cast<F>(eglGetProcAddress(name));
    return out != nullptr;
}

EGLDisplay openDisplay() {
    auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    const char* clientExts = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    if (getPlatformDisplay && clientExts &&
        std::string(clientExts).find("EGL_MESA_platform_surfaceless") != std::string::npos) {
        EGLDisplay d = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (d != EGL_NO_DISPLAY) return d;
    }
    return eglGetDisplay(EGL_DEFAULT_DISPLAY);
}

bool fail(const std::string& why) {
    r().reason = why;
    return false;
}

/// Creates the display and the context once; false (with the reason) on failure.
bool createContext() {
    Renderer& R = r();
    if (R.context != EGL_NO_CONTEXT) return true;
    if (R.tried) return false;
    R.tried = true;
#ifdef SIMHOST_NO_RENDERING
    return fail("this simhost was built without EGL: it runs headless and renders nothing");
#endif
    R.display = openDisplay();
    if (R.display == EGL_NO_DISPLAY) return fail("no EGL display (surfaceless or default)");
    EGLint major = 0, minor = 0;
    if (!eglInitialize(R.display, &major, &minor)) {
        R.display = EGL_NO_DISPLAY;
        return fail("eglInitialize failed (error 0x" + std::to_string(eglGetError()) + ")");
    }
    if (!eglBindAPI(EGL_OPENGL_API)) return fail("EGL has no desktop OpenGL API");
    const EGLint configAttribs[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    // A surfaceless context may need no config at all; take one when offered.
    eglChooseConfig(R.display, configAttribs, &config, 1, &count);
    const EGLint ctxAttribs[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                 EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT, EGL_NONE};
    R.context =
        eglCreateContext(R.display, count > 0 ? config : EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, ctxAttribs);
    if (R.context == EGL_NO_CONTEXT)
        R.context =
            eglCreateContext(R.display, count > 0 ? config : EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, nullptr);
    if (R.context == EGL_NO_CONTEXT) return fail("could not create an OpenGL compatibility context");
    if (!eglMakeCurrent(R.display, EGL_NO_SURFACE, EGL_NO_SURFACE, R.context)) {
        eglDestroyContext(R.display, R.context);
        R.context = EGL_NO_CONTEXT;
        return fail("the context cannot be made current without a surface");
    }
    bool ok = lookUp(R.genFramebuffers, "glGenFramebuffers") &&
              lookUp(R.bindFramebuffer, "glBindFramebuffer") &&
              lookUp(R.deleteFramebuffers, "glDeleteFramebuffers") &&
              lookUp(R.genRenderbuffers, "glGenRenderbuffers") &&
              lookUp(R.bindRenderbuffer, "glBindRenderbuffer") &&
              lookUp(R.deleteRenderbuffers, "glDeleteRenderbuffers") &&
              lookUp(R.renderbufferStorage, "glRenderbufferStorage") &&
              lookUp(R.framebufferRenderbuffer, "glFramebufferRenderbuffer") &&
              lookUp(R.checkFramebufferStatus, "glCheckFramebufferStatus");
    if (!ok) {
        eglMakeCurrent(R.display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(R.display, R.context);
        R.context = EGL_NO_CONTEXT;
        return fail("the OpenGL context has no framebuffer objects");
    }
    R.reason.clear();
    return true;
}

/// (Re)allocates the off-screen framebuffer for a frame size; false on failure.
bool ensureFramebuffer(int w, int h) {
    Renderer& R = r();
    if (R.fbo && R.fboWidth == w && R.fboHeight == h) {
        R.bindFramebuffer(GL_FRAMEBUFFER, R.fbo);
        return true;
    }
    if (R.fbo) {
        R.deleteFramebuffers(1, &R.fbo);
        R.deleteRenderbuffers(1, &R.colour);
        R.deleteRenderbuffers(1, &R.depth);
        R.fbo = R.colour = R.depth = 0;
    }
    R.genFramebuffers(1, &R.fbo);
    R.bindFramebuffer(GL_FRAMEBUFFER, R.fbo);
    R.genRenderbuffers(1, &R.colour);
    R.bindRenderbuffer(GL_RENDERBUFFER, R.colour);
    R.renderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, w, h);
    R.framebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, R.colour);
    R.genRenderbuffers(1, &R.depth);
    R.bindRenderbuffer(GL_RENDERBUFFER, R.depth);
    R.renderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, w, h);
    R.framebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, R.depth);
    R.framebufferRenderbuffer(GL_FRAMEBUFFER, GL_STENCIL_ATTACHMENT, GL_RENDERBUFFER, R.depth);
    if (R.checkFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        return fail("incomplete framebuffer");
    R.fboWidth = w;
    R.fboHeight = h;
    return true;
}

/// A gluPerspective without GLU.
void perspective(double fovYDeg, double aspect, double zNear, double zFar) {
    double top = zNear * std::tan(fovYDeg * kPi / 360.0);
    double right = top * aspect;
    glFrustum(-right, right, -top, top, zNear, zFar);
}

} // namespace

uint32_t Image::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) return 0;
    const uint8_t* p = &rgba[(static_cast<size_t>(height - 1 - y) * width + x) * 4];
    return (uint32_t(p[0]) << 24) | (uint32_t(p[1]) << 16) | (uint32_t(p[2]) << 8) | p[3];
}

void setEnabled(bool on) {
    Renderer& R = r();
    R.enabled = on;
    if (!on) {
        R.reason = "rendering is off";
    } else if (R.context == EGL_NO_CONTEXT && !R.tried) {
        R.reason.clear();
    }
}

bool available() {
    Renderer& R = r();
    if (!R.enabled) return false;
    return createContext();
}

std::string unavailableReason() {
    Renderer& R = r();
    if (!R.enabled) return "rendering is off";
    if (!createContext()) return R.reason;
    return {};
}

bool makeCurrent() {
    Renderer& R = r();
    if (!available()) return false;
    if (eglGetCurrentContext() != R.context &&
        !eglMakeCurrent(R.display, EGL_NO_SURFACE, EGL_NO_SURFACE, R.context))
        return false;
    return ensureFramebuffer(R.width, R.height);
}

bool beginFrame(int widthPx, int heightPx) {
    Renderer& R = r();
    if (widthPx <= 0 || heightPx <= 0 || widthPx > kMaxFramePx || heightPx > kMaxFramePx) {
        R.reason = "bad frame size " + std::to_string(widthPx) + "x" + std::to_string(heightPx);
        return false;
    }
    R.width = widthPx;
    R.height = heightPx;
    R.haveFrame = false;
    if (!makeCurrent()) return false;
    glViewport(0, 0, widthPx, heightPx);
    // State a plug-in may have left behind would stop the clear from reaching every pixel.
    glDisable(GL_SCISSOR_TEST);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glClearColor(0.45f, 0.62f, 0.82f, 1.0f); // a daylight sky
    glClearDepth(1.0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    return true;
}

namespace {
// The sun X-Plane lights the 3-D phases with: light 0, a directional light from the
// south-east, 55 degrees up, set in world coordinates (after the view transform).
// Whether lighting is on stays the plug-in's choice (XPLMSetGraphicsState).
constexpr GLfloat kSunDirection[4] = {0.47f, 0.82f, 0.33f, 0.0f}; // w = 0: directional
constexpr GLfloat kSunDiffuse[4] = {0.85f, 0.85f, 0.80f, 1.0f};
constexpr GLfloat kSkyAmbient[4] = {0.35f, 0.35f, 0.40f, 1.0f};

void setupSun() {
    glLightfv(GL_LIGHT0, GL_POSITION, kSunDirection);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, kSunDiffuse);
    glLightfv(GL_LIGHT0, GL_AMBIENT, kSkyAmbient);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kSkyAmbient);
    glEnable(GL_LIGHT0);
    glEnable(GL_NORMALIZE); // models may be scaled
}
} // namespace

void setup3D(const View& view) {
    Renderer& R = r();
    if (!makeCurrent()) return;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    float zoom = (view.zoom > 0.01f && std::isfinite(view.zoom)) ? view.zoom : 1.0f;
    double fov = std::clamp(static_cast<double>(view.fovVerticalDeg) / zoom, 1.0, 170.0);
    perspective(fov, static_cast<double>(R.width) / R.height, kNearClipM, kFarClipM);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    // The camera looks down -Z at heading 0; world = T(eye) Ry(-heading) Rx(pitch) Rz(-roll),
    // so the view matrix is its inverse.
    glRotatef(view.roll, 0, 0, 1);
    glRotatef(-view.pitch, 1, 0, 0);
    glRotatef(view.heading, 0, 1, 0);
    glTranslated(-view.x, -view.y, -view.z);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    setupSun();
}

void setup2D() {
    Renderer& R = r();
    if (!makeCurrent()) return;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, R.width, 0, R.height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_FOG);
    glDisable(GL_CULL_FACE); // 3-D drawing may leave it on; 2-D drawing faces either way
}

void endFrame() {
    if (!makeCurrent()) return;
    glFinish();
    r().haveFrame = true;
}

bool readPixels(int left, int top, int right, int bottom, Image& out) {
    Renderer& R = r();
    out = Image{};
    if (!makeCurrent()) return false;
    left = std::clamp(left, 0, R.width);
    right = std::clamp(right, 0, R.width);
    bottom = std::clamp(bottom, 0, R.height);
    top = std::clamp(top, 0, R.height);
    if (right <= left || top <= bottom) return false;
    out.width = right - left;
    out.height = top - bottom;
    std::vector<uint8_t> bottomFirst(static_cast<size_t>(out.width) * out.height * 4);
    glFinish();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(left, bottom, out.width, out.height, GL_RGBA, GL_UNSIGNED_BYTE, bottomFirst.data());
    // GL reads bottom row first; pictures are stored top row first.
    out.rgba.resize(bottomFirst.size());
    size_t row = static_cast<size_t>(out.width) * 4;
    for (int y = 0; y < out.height; ++y)
        std::copy_n(&bottomFirst[y * row], row, &out.rgba[(out.height - 1 - y) * row]);
    return true;
}

bool readFrame(Image& out) {
    Renderer& R = r();
    return readPixels(0, R.height, R.width, 0, out);
}

bool writePng(const Image& image, const std::string& path, std::string* why) {
    auto failWith = [&](const std::string& text) {
        if (why) *why = text;
        return false;
    };
    if (image.width <= 0 || image.height <= 0 ||
        image.rgba.size() != static_cast<size_t>(image.width) * image.height * 4)
        return failWith("empty picture");
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "wb"), &std::fclose);
    if (!file) return failWith("cannot write " + path);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!png || !info) {
        png_destroy_write_struct(&png, &info);
        return failWith("libpng could not start");
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return failWith("libpng failed writing " + path);
    }
    png_init_io(png, file.get());
    png_set_IHDR(png, info, image.width, image.height, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < image.height; ++y)
        png_write_row(png, const_cast<png_bytep>(&image.rgba[static_cast<size_t>(y) * image.width * 4]));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

bool writePng(const std::string& path, std::string* why) {
    Image frame;
    if (!r().haveFrame || !readFrame(frame)) {
        if (why) *why = available() ? "no frame was rendered yet" : unavailableReason();
        return false;
    }
    return writePng(frame, path, why);
}

void frameSize(int& widthPx, int& heightPx) {
    widthPx = r().width;
    heightPx = r().height;
}

void setReferencePoint(double latitudeDeg, double longitudeDeg) {
    if (!std::isfinite(latitudeDeg) || !std::isfinite(longitudeDeg)) return;
    r().refLatDeg = std::clamp(latitudeDeg, -89.0, 89.0);
    r().refLonDeg = longitudeDeg;
}

void referencePoint(double& latitudeDeg, double& longitudeDeg) {
    latitudeDeg = r().refLatDeg;
    longitudeDeg = r().refLonDeg;
}

} // namespace simhost::gfx
