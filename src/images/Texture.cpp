// HV_Texture: a picture file uploaded as one OpenGL texture and drawn piece by piece.
#include "images/Texture.h"

#include "images/Bitmap.h"
#include "images/ImageFiles.h"

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"

#include <GL/gl.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

constexpr float kReferenceScreenWidth = 1024.0f; // pixels at screenScale 1
constexpr float kPanelFadeAlpha = 0.4f;          // pieces that fade with a transparent panel
constexpr unsigned int kLargestTextureSide = 8192;

// Simulator values read while drawing, looked up on first use.
XPLMDataRef ambientRed = nullptr, ambientGreen = nullptr, ambientBlue = nullptr;
XPLMDataRef cockpitLightON = nullptr, cockpitTransparent = nullptr, cockpitLightLevel = nullptr;
bool gDrawingRefsFound = false;

void LookUpDrawingRefs() {
    ambientRed = XPLMFindDataRef("sim/graphics/misc/cockpit_light_level_r");
    ambientGreen = XPLMFindDataRef("sim/graphics/misc/cockpit_light_level_g");
    ambientBlue = XPLMFindDataRef("sim/graphics/misc/cockpit_light_level_b");
    cockpitLightON = XPLMFindDataRef("sim/cockpit/electrical/cockpit_lights_on");
    cockpitTransparent = XPLMFindDataRef("sim/graphics/settings/transparent_panel");
    cockpitLightLevel = XPLMFindDataRef("sim/cockpit/electrical/cockpit_lights");
    gDrawingRefsFound = true;
}

void FindDrawingRefs() {
    if (!gDrawingRefsFound) LookUpDrawingRefs();
}

/// A light level, full light when the simulator does not have the dataref.
float LightLevel(XPLMDataRef ref) {
    return ref ? XPLMGetDataf(ref) : 1.0f;
}

/// True when p is a power of two from 2 to 8192 (1 does not count).
bool IsTexturePower(unsigned int p) {
    for (unsigned int power = 2; power <= kLargestTextureSide; power *= 2)
        if (p == power) return true;
    return false;
}

/// The smallest power of two from 2 upward that is at least `side` (0 when there is none).
unsigned int PowerAtLeast(unsigned int side) {
    constexpr unsigned int kLargestPower = 1u << 31;
    unsigned int power = 2;
    while (power < side && power < kLargestPower)
        power *= 2;
    return power >= side ? power : 0;
}

/// Removes row padding so that rows follow each other byte for byte. False when out of memory.
bool Unpad(ImageInfo* info) {
    if (info->pad == 0) return true;
    const size_t row = static_cast<size_t>(info->width * info->channels);
    auto* packed = static_cast<unsigned char*>(std::malloc(row * static_cast<size_t>(info->height) + 1));
    if (!packed) return false;
    for (long y = 0; y < info->height; ++y)
        std::memcpy(packed + row * static_cast<size_t>(y), info->data + y * BitmapRowBytes(info), row);
    std::free(info->data);
    info->data = packed;
    info->pad = 0;
    return true;
}

} // namespace

HV_Texture::HV_Texture(bool asTexture) {
    Init(asTexture);
}

HV_Texture::~HV_Texture() {
    std::free(data);
}

void HV_Texture::Init(bool asTextureFlag) {
    std::free(data);
    data = nullptr;
    bitsPerPixel = 0;
    width = height = imageWidth = imageHeight = 0;
    textureID = 0;
    asTexture = asTextureFlag;
    autoNight = false;
    int screenWidth = 0;
    XPLMGetScreenSize(&screenWidth, nullptr);
    screenScale = static_cast<float>(screenWidth) / kReferenceScreenWidth;
}

void HV_Texture::SetAsTexture(bool asTextureFlag) {
    asTexture = asTextureFlag;
}

void HV_Texture::SetAutoNight(bool autoNightFlag) {
    autoNight = autoNightFlag;
}

bool HV_Texture::TakeBitmap(int status, ImageInfo* info) {
    // Rows are kept without padding so that uploads need no row alignment.
    if (status == 0 && !Unpad(info)) status = ENOMEM;
    if (status != 0) {
        std::free(info->data);
        info->data = nullptr;
        return false;
    }
    std::free(data);
    data = info->data;
    info->data = nullptr;
    bitsPerPixel = info->channels * 8;
    width = imageWidth = static_cast<unsigned int>(info->width);
    height = imageHeight = static_cast<unsigned int>(info->height);
    if (asTexture) BuildTextureFromData();
    return true;
}

bool HV_Texture::LoadTGA(const char* path) {
    ImageInfo info{nullptr, 0, 0, 0, 0};
    return TakeBitmap(CreateBitmapFromTGA(path, &info), &info);
}

bool HV_Texture::LoadPNG(const char* path) {
    ImageInfo info{nullptr, 0, 0, 0, 0};
    int status = CreateBitmapFromPNG(path, &info);
    if (status == 0) status = ConvertBitmapToAlpha(&info); // magenta colour key becomes transparent
    return TakeBitmap(status, &info);
}

bool HV_Texture::LoadBMP(const char* path) {
    ImageInfo info{nullptr, 0, 0, 0, 0};
    int status = CreateBitmapFromFile(path, &info);
    if (status == 0) SwapRB(&info); // BMP pixels are blue-green-red; the texture is uploaded as RGB
    return TakeBitmap(status, &info);
}

void HV_Texture::BuildTextureFromData() {
    if (!data || width == 0 || height == 0) return;
    XPLMSetGraphicsState(0, 0, 0, 1, 1, 0, 0);
    XPLMGenerateTextureNumbers(&textureID, 1);
    XPLMBindTexture2d(textureID, 0);
    const GLenum format = bitsPerPixel == 24 ? GL_RGB : GL_RGBA;
    const int channels = bitsPerPixel == 24 ? 3 : 4;

    // Only a picture with no side a power of two is padded; the picture goes to the top
    // left of the larger texture, the rest stays transparent black.
    if (!IsTexturePower(width) && !IsTexturePower(height)) {
        const unsigned int newWidth = PowerAtLeast(width), newHeight = PowerAtLeast(height);
        const size_t newRow = static_cast<size_t>(newWidth) * channels;
        const size_t oldRow = static_cast<size_t>(width) * channels;
        auto* padded =
            newWidth && newHeight ? static_cast<unsigned char*>(std::calloc(newRow * newHeight, 1)) : nullptr;
        if (!padded) {
            std::free(data);
            data = nullptr;
            return;
        }
        for (unsigned int y = 0; y < height; ++y) // rows bottom first: the picture's top row at the top
            std::memcpy(padded + newRow * (newHeight - height + y), data + oldRow * y, oldRow);
        std::free(data);
        data = padded;
        imageWidth = width;
        imageHeight = height;
        width = newWidth;
        height = newHeight;
    }

    XPLMBindTexture2d(textureID, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    GLint alignment = 4;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1); // rows are packed byte for byte
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), static_cast<GLsizei>(width),
                 static_cast<GLsizei>(height), 0, format, GL_UNSIGNED_BYTE, data);
    glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
    glGetError(); // a failed upload leaves an empty texture; drawing goes on

    std::free(data);
    data = nullptr;
}

void HV_Texture::DrawTexture(float s1, float t1, float s2, float t2, int x, int y, int w, int h,
                             float angle) {
    const bool rotated = angle != 0.0f;
    if (rotated) {
        // Turn about the rectangle's own centre, not the screen origin.
        const int cx = x + w / 2, cy = y + h / 2;
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
        glTranslatef(static_cast<float>(cx), static_cast<float>(cy), 0.0f);
        glRotatef(angle, 0.0f, 0.0f, 1.0f);
        glTranslatef(static_cast<float>(-cx), static_cast<float>(-cy), 0.0f);
    }
    glBegin(GL_QUADS);
    glTexCoord2f(s1, t1);
    glVertex2i(x, y);
    glTexCoord2f(s1, t2);
    glVertex2i(x, y + h);
    glTexCoord2f(s2, t2);
    glVertex2i(x + w, y + h);
    glTexCoord2f(s2, t1);
    glVertex2i(x + w, y);
    glEnd();
    if (rotated) glPopMatrix();
}

void HV_Texture::ApplyTint(bool nightLit, float alpha, const float* color, bool colorKeepsAlpha) {
    if (color) {
        float current[4] = {1.0f, 1.0f, 1.0f, 1.0f};
        if (colorKeepsAlpha) glGetFloatv(GL_CURRENT_COLOR, current);
        glColor4f(color[0], color[1], color[2], colorKeepsAlpha ? current[3] : alpha);
    } else if (nightLit) {
        FindDrawingRefs();
        glColor4f(LightLevel(ambientRed), LightLevel(ambientGreen), LightLevel(ambientBlue), alpha);
    } else {
        glColor4f(1.0f, 1.0f, 1.0f, alpha);
    }
}

void HV_Texture::DrawPiece(float px1, float py1, float px2, float py2, int x, int y, int w, int h,
                           bool nightLit, float alpha, const float* color, bool colorKeepsAlpha,
                           float angle) {
    if (textureID == 0 || width == 0 || height == 0) return; // nothing was built
    XPLMSetGraphicsState(0, 1, 0, 0, 1, 0, 0);
    XPLMBindTexture2d(textureID, 0);
    ApplyTint(nightLit, alpha, color, colorKeepsAlpha);
    // Texture pixels to 0..1 over the texture as uploaded (padding included).
    const float w0 = static_cast<float>(width), h0 = static_cast<float>(height);
    DrawTexture(px1 / w0, py1 / h0, px2 / w0, py2 / h0, x, y, w, h, angle);
}

void HV_Texture::DrawTexturePeaceComplete(float px1, float py1, float px2, float py2, int x, int y, int w,
                                          int h, bool nightLit, bool fadeWithPanel, float angle,
                                          const float* color) {
    FindDrawingRefs();
    const bool panelTransparent = cockpitTransparent && XPLMGetDatai(cockpitTransparent) != 0;
    const float alpha = fadeWithPanel && panelTransparent ? kPanelFadeAlpha : 1.0f;
    DrawPiece(px1, py1, px2, py2, x, y, w, h, nightLit, alpha, color, true, angle);
}

void HV_Texture::DrawTexturePeace(float px1, float py1, float px2, float py2, int x, int y, bool nightLit,
                                  bool fadeWithPanel, float angle, const float* color) {
    DrawTexturePeaceComplete(px1, py1, px2, py2, x, y, static_cast<int>(px2 - px1),
                             static_cast<int>(py2 - py1), nightLit, fadeWithPanel, angle, color);
}

void HV_Texture::DrawTexturePeaceTransparent(float px1, float py1, float px2, float py2, int x, int y, int w,
                                             int h, float alpha, bool nightLit, float angle,
                                             const float* color) {
    DrawPiece(px1, py1, px2, py2, x, y, w, h, nightLit, alpha, color, false, angle);
}

void HV_Texture::FindDataRefs() {
    LookUpDrawingRefs();
}

void HV_Texture::DeleteTexture(int textureName) {
    const GLuint name = static_cast<GLuint>(textureName);
    glDeleteTextures(1, &name);
    if (textureName == textureID) textureID = 0;
}
