// The XPLMGraphics.h functions on real OpenGL: graphics state, texture
// numbers and binding, the flat-earth local frame, and 2-D text and boxes.
//
// X-Plane keeps a cache of the GL state it sets; simhost applies every call
// straight to GL instead, so a plug-in that also changes GL state directly
// never finds the two out of step.
#define GL_GLEXT_PROTOTYPES 1
#include "XPLMGraphics.h"

#include "graphics/BitmapFont.h"
#include "graphics/GraphicsHooks.h"
#include "HostInternal.h"
#include "graphics/ApiFirewall.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
namespace {
/// opengl32.dll stops at OpenGL 1.1: glActiveTexture comes from the driver of a current context,
/// and does nothing without one (the headless Windows simhost never has one).
void APIENTRY ActiveTexture(GLenum unit) {
    using Function = void(APIENTRY*)(GLenum);
    static const auto function =
        reinterpret_cast<Function>(reinterpret_cast<void*>(wglGetProcAddress("glActiveTexture")));
    if (function) function(unit);
}
} // namespace
#define glActiveTexture ActiveTexture
#endif

namespace {

using namespace simhost;

constexpr int kMaxTextureUnits = 4;         // units XPLMSetGraphicsState and XPLMBindTexture2d address
constexpr double kEarthRadiusM = 6371008.8; // mean Earth radius, metres
constexpr double kPi = 3.14159265358979323846;
constexpr double kDegToRad = kPi / 180.0;
constexpr float kDarkBoxAlpha = 0.6f;  // opacity of XPLMDrawTranslucentDarkBox
constexpr int kMaxNumberChars = 64;    // longest text XPLMDrawNumber formats
constexpr int kInterfaceTexturePx = 8; // side of the general-interface texture, pixels

/// Texture numbers handed out while no GL context exists (rendering off).
int gNextFakeTexture = 1;
/// The general-interface texture (xplm_Tex_GeneralInterface), made on first use.
GLuint gInterfaceTexture = 0;

/// The local frame's reference point, degrees: the world's (the value its
/// lat_ref/lon_ref datarefs publish) when a host is live, else the renderer's own.
void reference(double& latDeg, double& lonDeg) {
    gfx::referencePoint(latDeg, lonDeg);
    if (const detail::HostCore* c = detail::core()) {
        latDeg = detail::refLat(*c);
        lonDeg = detail::refLon(*c);
    }
}

/// Sets or clears one capability.
void setCap(GLenum cap, int on) {
    if (on)
        glEnable(cap);
    else
        glDisable(cap);
}

/// Splits text into the lines drawn with a word-wrap width (pixels; <= 0: no wrap).
std::vector<std::string> wrapLines(const char* text, int wrapPx, int fontId) {
    std::vector<std::string> lines;
    std::string line;
    std::string word;
    auto flushWord = [&]() {
        if (word.empty()) return;
        std::string candidate = line.empty() ? word : line + " " + word;
        if (wrapPx > 0 && !line.empty() &&
            gfx::font::measure(fontId, candidate.c_str(), static_cast<int>(candidate.size())) > wrapPx) {
            lines.push_back(line);
            line = word;
        } else {
            line = candidate;
        }
        word.clear();
    };
    for (const char* p = text; *p; ++p) {
        if (*p == ' ') {
            flushWord();
        } else if (*p == '\n') {
            flushWord();
            lines.push_back(line);
            line.clear();
        } else {
            word += *p;
        }
    }
    flushWord();
    lines.push_back(line);
    return lines;
}

/// Keeps the GL state a 2-D drawing helper touches and puts it back afterwards.
struct Saved2DState {
    Saved2DState() {
        glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT | GL_TEXTURE_BIT);
        glActiveTexture(GL_TEXTURE0);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_LIGHTING);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_CULL_FACE); // glyph quads turn clockwise: text shows whatever culling the caller left on
    }
    ~Saved2DState() { glPopAttrib(); }
    Saved2DState(const Saved2DState&) = delete;
    Saved2DState& operator=(const Saved2DState&) = delete;
};

} // namespace

extern "C" {

void XPLMSetGraphicsState(int inEnableFog, int inNumberTexUnits, int inEnableLighting,
                          int inEnableAlphaTesting, int inEnableAlphaBlending, int inEnableDepthTesting,
                          int inEnableDepthWriting) {
    if (!gfx::available()) return;
    setCap(GL_FOG, inEnableFog);
    for (int unit = 0; unit < kMaxTextureUnits; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        setCap(GL_TEXTURE_2D, unit < inNumberTexUnits);
    }
    glActiveTexture(GL_TEXTURE0);
    setCap(GL_LIGHTING, inEnableLighting);
    setCap(GL_ALPHA_TEST, inEnableAlphaTesting);
    if (inEnableAlphaTesting) glAlphaFunc(GL_GREATER, 0.0f); // drop fully transparent texels only
    setCap(GL_BLEND, inEnableAlphaBlending);
    if (inEnableAlphaBlending) glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    setCap(GL_DEPTH_TEST, inEnableDepthTesting);
    glDepthMask(inEnableDepthWriting ? GL_TRUE : GL_FALSE);
}

void XPLMBindTexture2d(int inTextureNum, int inTextureUnit) {
    if (inTextureUnit < 0 || inTextureUnit >= kMaxTextureUnits || inTextureNum < 0) return;
    if (!gfx::makeCurrent()) return;
    glActiveTexture(GL_TEXTURE0 + inTextureUnit);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(inTextureNum));
    glActiveTexture(GL_TEXTURE0);
}

void XPLMGenerateTextureNumbers(int* outTextureIDs, int inCount) {
    detail::firewall("XPLMGenerateTextureNumbers", [&] {
        if (!outTextureIDs || inCount <= 0) return;
        if (!gfx::makeCurrent()) {
            for (int i = 0; i < inCount; ++i)
                outTextureIDs[i] = gNextFakeTexture++;
            return;
        }
        std::vector<GLuint> names(static_cast<size_t>(inCount));
        glGenTextures(inCount, names.data());
        for (int i = 0; i < inCount; ++i)
            outTextureIDs[i] = static_cast<int>(names[i]);
    });
}

int XPLMGetTexture(XPLMTextureID inTexture) {
    if (inTexture != xplm_Tex_GeneralInterface || !gfx::makeCurrent()) return 0;
    if (!gInterfaceTexture) {
        // A plain light-grey sheet: plug-ins that sample the interface texture get a neutral colour.
        std::vector<unsigned char> grey(kInterfaceTexturePx * kInterfaceTexturePx * 4, 200);
        glGenTextures(1, &gInterfaceTexture);
        glBindTexture(GL_TEXTURE_2D, gInterfaceTexture);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, kInterfaceTexturePx, kInterfaceTexturePx, 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, grey.data());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glBindTexture(GL_TEXTURE_2D, 0);
    }
    return static_cast<int>(gInterfaceTexture);
}

void XPLMWorldToLocal(double inLatitude, double inLongitude, double inAltitude, double* outX, double* outY,
                      double* outZ) {
    double lat0 = 0, lon0 = 0;
    reference(lat0, lon0);
    // Flat earth around the reference point: +X east, +Y up, +Z south.
    double dLon = std::remainder(inLongitude - lon0, 360.0);
    if (outX) *outX = dLon * kDegToRad * kEarthRadiusM * std::cos(lat0 * kDegToRad);
    if (outY) *outY = inAltitude;
    if (outZ) *outZ = -(inLatitude - lat0) * kDegToRad * kEarthRadiusM;
}

void XPLMLocalToWorld(double inX, double inY, double inZ, double* outLatitude, double* outLongitude,
                      double* outAltitude) {
    double lat0 = 0, lon0 = 0;
    reference(lat0, lon0);
    double metresPerDegLon = kDegToRad * kEarthRadiusM * std::cos(lat0 * kDegToRad);
    if (outLatitude) *outLatitude = lat0 - inZ / (kDegToRad * kEarthRadiusM);
    if (outLongitude) *outLongitude = std::remainder(lon0 + inX / metresPerDegLon, 360.0);
    if (outAltitude) *outAltitude = inY;
}

void XPLMDrawTranslucentDarkBox(int inLeft, int inTop, int inRight, int inBottom) {
    if (!gfx::available()) return;
    Saved2DState saved;
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0, 0, 0, kDarkBoxAlpha);
    glBegin(GL_QUADS);
    glVertex2i(inLeft, inBottom);
    glVertex2i(inRight, inBottom);
    glVertex2i(inRight, inTop);
    glVertex2i(inLeft, inTop);
    glEnd();
}

void XPLMDrawString(float* inColorRGB, int inXOffset, int inYOffset, const char* inChar, int* inWordWrapWidth,
                    XPLMFontID inFontID) {
    detail::firewall("XPLMDrawString", [&] {
        if (!inChar || !gfx::available()) return;
        Saved2DState saved;
        if (inColorRGB)
            glColor3f(inColorRGB[0], inColorRGB[1], inColorRGB[2]);
        else
            glColor3f(1, 1, 1);
        int wrap = inWordWrapWidth ? *inWordWrapWidth : 0;
        int y = inYOffset;
        for (const std::string& line : wrapLines(inChar, wrap, inFontID)) {
            gfx::font::drawLine(inFontID, static_cast<float>(inXOffset), static_cast<float>(y), line.c_str(),
                                static_cast<int>(line.size()));
            y -= gfx::font::kLineHeightPx;
        }
    });
}

void XPLMDrawNumber(float* inColorRGB, int inXOffset, int inYOffset, double inValue, int inDigits,
                    int inDecimals, int inShowSign, XPLMFontID inFontID) {
    char text[kMaxNumberChars];
    int decimals = inDecimals < 0 ? 0 : (inDecimals > 20 ? 20 : inDecimals);
    int digits = inDigits < 0 ? 0 : (inDigits > 20 ? 20 : inDigits);
    // inDigits counts the digits before the decimal point; shorter numbers are padded with zeros.
    int width = digits + (decimals > 0 ? decimals + 1 : 0) + (inShowSign || inValue < 0 ? 1 : 0);
    std::snprintf(text, sizeof text, inShowSign ? "%+0*.*f" : "%0*.*f", width, decimals, inValue);
    XPLMDrawString(inColorRGB, inXOffset, inYOffset, text, nullptr, inFontID);
}

void XPLMGetFontDimensions(XPLMFontID inFontID, int* outCharWidth, int* outCharHeight, int* outDigitsOnly) {
    if (outCharWidth) *outCharWidth = gfx::font::advance(inFontID, 'M');
    if (outCharHeight) *outCharHeight = gfx::font::kLineHeightPx;
    if (outDigitsOnly) *outDigitsOnly = 0; // every font here draws letters too
}

float XPLMMeasureString(XPLMFontID inFontID, const char* inChar, int inNumChars) {
    if (!inChar || inNumChars <= 0) return 0.0f;
    return static_cast<float>(gfx::font::measure(inFontID, inChar, inNumChars));
}

} // extern "C"
