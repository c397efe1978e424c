// A piece of a texture shown in a custom widget.
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "images/Texture.h"
#include "toolkit/Controls.h"
#include "utils/HV_LOGUtils.h"

HV_CtrlPicture::HV_CtrlPicture(HV_Texture* texture_, int left_, int top_, int right_, int bottom_,
                               bool nightLit_, bool visible_)
    : HV_Panel(kHV_NoStyle, false, 0, nullptr, true, visible_), texture(texture_), pieceLeft(left_),
      pieceTop(top_), pieceRight(right_), pieceBottom(bottom_), nightLit(nightLit_) {
    const int height = pieceBottom - pieceTop;
    bottom = minHeight = maxHeight = height;
}

HV_CtrlPicture::~HV_CtrlPicture() = default;

void HV_CtrlPicture::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const int width = pieceRight - pieceLeft, height = pieceBottom - pieceTop;
    widget = XPCreateCustomWidget(left, top - margeY, left + width, top - margeY - height, visible ? 1 : 0,
                                  "", 0, rootWidget, PictureHandler);
    LinkWidget(widget);
}

void HV_CtrlPicture::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
}

void HV_CtrlPicture::SetPicture(HV_Texture* texture_, int left_, int top_, int right_, int bottom_) {
    texture = texture_;
    pieceLeft = left_;
    pieceTop = top_;
    pieceRight = right_;
    pieceBottom = bottom_;
}

int HV_CtrlPicture::PictureHandler(XPWidgetMessage message, XPWidgetID widget_, intptr_t, intptr_t) {
    if (message != xpMsg_Draw) return 0;
    try {
        auto* picture = dynamic_cast<HV_CtrlPicture*>(HV_Panel::FromWidget(widget_));
        if (!picture || !picture->visible || !picture->texture || picture->texture->textureID == 0) return 1;
        int l = 0, b = 0;
        XPGetWidgetGeometry(widget_, &l, nullptr, nullptr, &b);
        picture->texture->DrawTexturePeace(
            static_cast<float>(picture->pieceLeft), static_cast<float>(picture->pieceTop),
            static_cast<float>(picture->pieceRight), static_cast<float>(picture->pieceBottom), l, b,
            picture->nightLit, false, 0.0f, nullptr);
    } catch (...) {
        HV_LOGUtils::Add2Log("picture: drawing failed", HV_LOGUtils::kHV_LOG_ALERT);
    }
    return 1;
}
