// The look of a panel: a filled background and a bevelled border drawn in the
// simulator's 2-D window coordinates (pixels, origin bottom left, y upwards).
// Colours are arrays of three floats (red, green, blue, 0..1) that the style
// points to but does not own; alphas are 0..1.
#pragma once

/// Background and bevelled border of a panel.
class HV_PanelStyle {
public:
    const float* backColor = nullptr;    ///< fill colour (not owned)
    float backAlpha = 0.0f;              ///< fill alpha
    const float* border1Color = nullptr; ///< colour of the top and left edges (not owned)
    float border1Width = 0.0f;           ///< their line width, pixels
    const float* border2Color = nullptr; ///< colour of the right and bottom edges (not owned)
    float border2Width = 0.0f;           ///< their line width, pixels
    float borderAlpha = 0.0f;            ///< alpha of both border halves

    /// A style with every field given.
    HV_PanelStyle(const float* back, float backAlpha, const float* border1, float border1Width,
                  const float* border2, float border2Width, float borderAlpha);
    virtual ~HV_PanelStyle();

    /// Fills the rectangle grown by one pixel on each side, then draws the bevel on it.
    void Draw(int left, int top, int right, int bottom);
};

/// Invisible: no fill and no border.
HV_PanelStyle* Style_Nothing();
/// Faint grey fill with grey borders of width w pixels.
HV_PanelStyle* Style_Classic(float w);
/// Style_Classic(0).
HV_PanelStyle* Style_ClassicNoBorder();
/// No fill, an opaque border of width w in `color`.
HV_PanelStyle* Style_Border(float w, const float* color);
/// Fill `back` at `backAlpha` and an opaque border of width w in `border`.
HV_PanelStyle* Style_BorderBack(float w, const float* border, const float* back, float backAlpha);
/// White list background, sunken grey/white border of width w.
HV_PanelStyle* Style_List(float w);
/// Sunken frame: grey top-left, white bottom-right, width w.
HV_PanelStyle* Style_Down(float w);
/// Raised frame: white top-left, grey bottom-right, width w.
HV_PanelStyle* Style_Up(float w);
