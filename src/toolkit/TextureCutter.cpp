#include "toolkit/TextureCutter.h"

#include "XPLMUtilities.h"
#include "XPWidgets.h"
#include "images/Texture.h"
#include "toolkit/Colors.h"
#include "toolkit/Controls.h"
#include "toolkit/OGLUtils.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"

#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

constexpr int kMaxViewWidth = 900;   // pixels: larger textures show their top-left part
constexpr int kMaxViewHeight = 600;  // pixels
constexpr int kFrameWidth = 20;      // pixels around the picture
constexpr int kMinWindowWidth = 360; // pixels, room for the two text lines
constexpr long kMsgClose = 1200;
constexpr float kCutColor[3] = {1.0f, 0.2f, 0.2f};
constexpr int kLineBytes = 160;

void LogLine(const std::string& text) {
    XPLMDebugString(("Kalvora texture cutter: " + text + "\n").c_str());
}

/// Visible piece of the texture, texture pixels (the picture is in the texture's top-left corner).
struct View {
    int width = 0, height = 0, textureTop = 0;
};

View ViewOf(const HV_Texture& t) {
    View v;
    v.width = std::min(static_cast<int>(t.imageWidth), kMaxViewWidth);
    v.height = std::min(static_cast<int>(t.imageHeight), kMaxViewHeight);
    v.textureTop = static_cast<int>(t.height);
    return v;
}

/// Screen point to texture pixel, clamped to the visible piece.
void ToTexture(const HV_TextureCutter& c, int x, int y, int* tx, int* ty) {
    int l = 0, t = 0, r = 0, b = 0;
    XPGetWidgetGeometry(c.picture->widget, &l, &t, &r, &b);
    const View v = ViewOf(*c.texture);
    *tx = std::clamp(x - l, 0, v.width);
    *ty = std::clamp(y - b, 0, v.height) + v.textureTop - v.height;
}

int CutterMouse(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2) {
    try {
        auto* cutter = reinterpret_cast<HV_TextureCutter*>(
            XPGetWidgetProperty(widget, static_cast<XPWidgetPropertyID>(xpProperty_UserStart), nullptr));
        if (!cutter) return 0;
        if (message == xpMsg_Draw) {
            HV_CtrlPicture::PictureHandler(message, widget, param1, param2);
            if (cutter->cut.right > cutter->cut.left || cutter->cut.top > cutter->cut.bottom) {
                int l = 0, t = 0, r = 0, b = 0;
                XPGetWidgetGeometry(widget, &l, &t, &r, &b);
                const View v = ViewOf(*cutter->texture);
                const int shift = v.textureTop - v.height; // texture row of the screen's bottom edge
                HV_OGLUtils::DrawRect(l + cutter->cut.left, b + cutter->cut.top - shift,
                                      l + cutter->cut.right, b + cutter->cut.bottom - shift, kCutColor, 1.0f,
                                      1.0f);
            }
            return 1;
        }
        if (message != xpMsg_MouseDown && message != xpMsg_MouseDrag && message != xpMsg_MouseUp) return 0;
        const auto* mouse = reinterpret_cast<const XPMouseState_t*>(param1);
        int tx = 0, ty = 0;
        ToTexture(*cutter, mouse->x, mouse->y, &tx, &ty);
        if (message == xpMsg_MouseDown) {
            cutter->dragging = true;
            cutter->anchorX = tx;
            cutter->anchorY = ty;
        }
        if (!cutter->dragging) return 1;
        cutter->DragTo(tx, ty);
        if (message == xpMsg_MouseUp) {
            cutter->dragging = false;
            LogLine(cutter->PixelText());
            LogLine(cutter->UnitText());
        }
        return 1;
    } catch (const std::exception& e) {
        LogLine(std::string("failed: ") + e.what());
    } catch (...) {
        LogLine("failed");
    }
    return 0;
}

int CutterWindowHandler(void* cutter, long message, HV_Panel*, long, long) {
    if (message != kMsgClose) return 0;
    delete static_cast<HV_TextureCutter*>(cutter); // the toolkit deletes the window
    return kHV_CloseWindow;
}

} // namespace

HV_TextureCutter::HV_TextureCutter(const char* path) {
    texture = new HV_Texture(true);
    const bool loaded = path && texture->LoadPNG(path);
    const View v = ViewOf(*texture);
    const int width = std::max(v.width + kFrameWidth, kMinWindowWidth);
    window = new HV_Window(this, CutterWindowHandler, width, "Texture cutter", true, true);
    HV_Panel* panel = new HV_Panel(Style_Nothing(), false, 0, nullptr, true, true);
    window->AddChild(panel);
    if (loaded) {
        picture = new HV_CtrlPicture(texture, 0, v.textureTop - v.height, v.width, v.textureTop, false, true);
        panel->AddChild(picture, 0);
        XPSetWidgetProperty(picture->widget, static_cast<XPWidgetPropertyID>(xpProperty_UserStart),
                            reinterpret_cast<intptr_t>(this));
        XPAddWidgetCallback(picture->widget, CutterMouse);
    } else {
        panel->AddChild(new HV_CtrlText("This file is not a PNG the plug-in can read.", kAlignLeft, true), 0);
        LogLine(std::string("cannot read ") + (path ? path : "(no file)"));
    }
    pixelLine = new HV_CtrlText("Drag a rectangle over the picture.", kAlignLeft, true);
    panel->AddChild(pixelLine, 0);
    unitLine = new HV_CtrlText("", kAlignLeft, true);
    panel->AddChild(unitLine, 0);
    window->Pack();
    window->Center();
}

HV_TextureCutter::~HV_TextureCutter() {
    if (texture->textureID) texture->DeleteTexture(texture->textureID);
    delete texture;
}

void HV_TextureCutter::DragTo(int x, int y) {
    cut.left = std::min(anchorX, x);
    cut.right = std::max(anchorX, x);
    cut.bottom = std::min(anchorY, y);
    cut.top = std::max(anchorY, y);
    const float w = texture->width ? static_cast<float>(texture->width) : 1.0f;
    const float h = texture->height ? static_cast<float>(texture->height) : 1.0f;
    cut.s1 = cut.left / w;
    cut.s2 = cut.right / w;
    cut.t1 = cut.bottom / h;
    cut.t2 = cut.top / h;
    pixelLine->SetText(PixelText().c_str());
    unitLine->SetText(UnitText().c_str());
}

std::string HV_TextureCutter::PixelText() const {
    char line[kLineBytes];
    std::snprintf(line, sizeof line, "pixels %d, %d, %d, %d (%d x %d)", cut.left, cut.bottom, cut.right,
                  cut.top, cut.right - cut.left, cut.top - cut.bottom);
    return line;
}

std::string HV_TextureCutter::UnitText() const {
    char line[kLineBytes];
    std::snprintf(line, sizeof line, "normalised %.4f, %.4f, %.4f, %.4f", cut.s1, cut.t1, cut.s2, cut.t2);
    return line;
}

HV_TextureCutter* OpenTextureCutter(const char* path) {
    return new HV_TextureCutter(path); // freed by its window's close box
}
