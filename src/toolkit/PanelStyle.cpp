#include "toolkit/PanelStyle.h"

#include "toolkit/Colors.h"
#include "toolkit/OGLUtils.h"

HV_PanelStyle::HV_PanelStyle(const float* back, float backAlpha_, const float* border1, float border1Width_,
                             const float* border2, float border2Width_, float borderAlpha_)
    : backColor(back), backAlpha(backAlpha_), border1Color(border1), border1Width(border1Width_),
      border2Color(border2), border2Width(border2Width_), borderAlpha(borderAlpha_) {}

HV_PanelStyle::~HV_PanelStyle() = default;

void HV_PanelStyle::Draw(int left, int top, int right, int bottom) {
    // One pixel of slack on every side so that the border lines sit outside the content.
    const int l = left - 1, t = top + 1, r = right + 1, b = bottom - 1;
    HV_OGLUtils::DrawFillRect(l, t, r, b, backColor, backAlpha);
    HV_OGLUtils::DrawRectBorders(l, t, r, b, border1Color, border1Width, border2Color, border2Width,
                                 borderAlpha);
}

HV_PanelStyle* Style_Nothing() {
    return new HV_PanelStyle(HV_OGLUtils_ColorGray, 0.0f, HV_OGLUtils_ColorGray, 0.0f, HV_OGLUtils_ColorGray,
                             0.0f, 0.0f);
}

HV_PanelStyle* Style_Classic(float w) {
    return new HV_PanelStyle(HV_OGLUtils_ColorGray, 0.1f, HV_OGLUtils_ColorGray, w, HV_OGLUtils_ColorGray, w,
                             0.2f);
}

HV_PanelStyle* Style_ClassicNoBorder() {
    return Style_Classic(0.0f);
}

HV_PanelStyle* Style_Border(float w, const float* color) {
    return new HV_PanelStyle(HV_OGLUtils_ColorWhite, 0.0f, color, w, color, w, 1.0f);
}

HV_PanelStyle* Style_BorderBack(float w, const float* border, const float* back, float backAlpha) {
    return new HV_PanelStyle(back, backAlpha, border, w, border, w, 1.0f);
}

HV_PanelStyle* Style_List(float w) {
    return new HV_PanelStyle(HV_OGLUtils_ColorWhite, 1.0f, HV_OGLUtils_ColorGray, w, HV_OGLUtils_ColorWhite,
                             w, 1.0f);
}

HV_PanelStyle* Style_Down(float w) {
    return new HV_PanelStyle(HV_OGLUtils_ColorGray, 0.1f, HV_OGLUtils_ColorGray, w, HV_OGLUtils_ColorWhite, w,
                             1.0f);
}

HV_PanelStyle* Style_Up(float w) {
    return new HV_PanelStyle(HV_OGLUtils_ColorGray, 0.1f, HV_OGLUtils_ColorWhite, w, HV_OGLUtils_ColorGray, w,
                             1.0f);
}
