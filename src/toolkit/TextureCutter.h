// Texture cutter, a layout tool: shows a PNG at one screen pixel per texture
// pixel; a rectangle dragged over it is shown and logged in texture pixels
// (t = 0 at the texture's bottom row, as DrawTexturePeace takes them) and in
// normalised coordinates (as DrawTexture takes them).
#pragma once

#include <string>

class HV_CtrlText;
class HV_Panel;
class HV_Texture;
class HV_Window;

/// The rectangle cut last, texture pixels and normalised 0..1.
struct HV_TextureCut {
    int left = 0, bottom = 0, right = 0, top = 0; ///< texture pixels, t = 0 at the bottom row
    float s1 = 0, t1 = 0, s2 = 0, t2 = 0;         ///< normalised by the texture's size
};

/// The cutter window over one PNG.
class HV_TextureCutter {
public:
    HV_Texture* texture = nullptr;    ///< owned
    HV_Panel* picture = nullptr;      ///< the picture control
    HV_CtrlText* pixelLine = nullptr; ///< the cut in texture pixels
    HV_CtrlText* unitLine = nullptr;  ///< the cut normalised
    HV_Window* window = nullptr;      ///< null once closed
    HV_TextureCut cut;                ///< the last rectangle
    bool dragging = false;            ///< the mouse is down on the picture
    int anchorX = 0, anchorY = 0;     ///< texture pixel where the drag began

    /// Opens the window over the PNG at path; a refused file shows a message line instead.
    explicit HV_TextureCutter(const char* path);
    ~HV_TextureCutter();
    HV_TextureCutter(const HV_TextureCutter&) = delete;
    HV_TextureCutter& operator=(const HV_TextureCutter&) = delete;

    /// The drag reached the texture pixel (x, y): the cut spans the anchor and it.
    void DragTo(int x, int y);
    /// The cut as the two text lines show it.
    std::string PixelText() const;
    std::string UnitText() const;
};

/// Opens a cutter over the PNG at path (any number may be open; each frees itself on close).
HV_TextureCutter* OpenTextureCutter(const char* path);
