// Measuring window, a layout tool: a translucent window to drag across the
// screen (by its title bar) and size (by its bottom-right corner); it shows
// its own position and size in screen pixels.
#pragma once

#include <string>

class HV_CtrlText;
class HV_Window;

/// The measuring window.
class HV_MeasureWindow {
public:
    HV_Window* window = nullptr;         ///< null once closed
    HV_CtrlText* positionLine = nullptr; ///< "left L top T right R bottom B"
    HV_CtrlText* sizeLine = nullptr;     ///< "W x H pixels"
    bool resizing = false;               ///< the corner is being dragged
    int gripDx = 0, gripDy = 0;          ///< corner minus mouse when the corner was grabbed, pixels
    int lastLeft = 0, lastTop = 0, lastRight = 0, lastBottom = 0; ///< geometry the lines show, pixels

    HV_MeasureWindow();
    HV_MeasureWindow(const HV_MeasureWindow&) = delete;
    HV_MeasureWindow& operator=(const HV_MeasureWindow&) = delete;

    /// Re-reads the window's geometry; the lines change when it moved or changed size.
    void Refresh();
    /// The two lines for a geometry (screen pixels, origin bottom left).
    static std::string PositionText(int left, int top, int right, int bottom);
    static std::string SizeText(int left, int top, int right, int bottom);
};

/// Opens the measuring window, or returns the one already open.
HV_MeasureWindow* OpenMeasureWindow();
