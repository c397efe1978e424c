// For a simhost built without EGL (Windows): the few EGL names the renderer uses, as
// calls that find no display, so rendering reports itself unavailable and the frame
// loop runs headless without pictures.
#pragma once

#include <cstdint>

using EGLDisplay = void*;
using EGLContext = void*;
using EGLSurface = void*;
using EGLConfig = void*;
using EGLint = std::int32_t;
using EGLenum = unsigned;
using EGLBoolean = unsigned;
using PFNEGLGETPLATFORMDISPLAYEXTPROC = EGLDisplay (*)(EGLenum, void*, const EGLint*);

constexpr EGLDisplay EGL_NO_DISPLAY = nullptr;
constexpr EGLContext EGL_NO_CONTEXT = nullptr;
constexpr EGLSurface EGL_NO_SURFACE = nullptr;
constexpr EGLConfig EGL_NO_CONFIG_KHR = nullptr;
constexpr void* EGL_DEFAULT_DISPLAY = nullptr;
// Values only to compile the calls below, which never reach an EGL.
constexpr EGLint EGL_NONE = 0, EGL_EXTENSIONS = 0, EGL_RENDERABLE_TYPE = 0, EGL_OPENGL_BIT = 0,
                 EGL_CONTEXT_OPENGL_PROFILE_MASK = 0, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT = 0;
constexpr EGLenum EGL_OPENGL_API = 0, EGL_PLATFORM_SURFACELESS_MESA = 0;

inline void (*eglGetProcAddress(const char*))() {
    return nullptr;
}
inline const char* eglQueryString(EGLDisplay, EGLint) {
    return nullptr;
}
inline EGLDisplay eglGetDisplay(void*) {
    return EGL_NO_DISPLAY;
}
inline EGLBoolean eglInitialize(EGLDisplay, EGLint*, EGLint*) {
    return 0;
}
inline EGLint eglGetError() {
    return 0;
}
inline EGLBoolean eglBindAPI(EGLenum) {
    return 0;
}
inline EGLBoolean eglChooseConfig(EGLDisplay, const EGLint*, EGLConfig*, EGLint, EGLint*) {
    return 0;
}
inline EGLContext eglCreateContext(EGLDisplay, EGLConfig, EGLContext, const EGLint*) {
    return EGL_NO_CONTEXT;
}
inline EGLBoolean eglMakeCurrent(EGLDisplay, EGLSurface, EGLSurface, EGLContext) {
    return 0;
}
inline EGLBoolean eglDestroyContext(EGLDisplay, EGLContext) {
    return 0;
}
inline EGLContext eglGetCurrentContext() {
    return EGL_NO_CONTEXT;
}
