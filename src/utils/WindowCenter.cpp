// Window_Center: placing a window in the middle of a 1024 x 768 screen.
#include "utils/GNLUtils.h"

namespace {
/// Centre of the fixed 1024 x 768 screen the toolkit lays its windows out on, pixels.
constexpr int kScreenCentreX = 512;
constexpr int kScreenCentreY = 384;
} // namespace

namespace HV_GNLUtils {

void Window_Center(XPLMWindowID window) {
    if (!window) return;
    int left = 0, top = 0, right = 0, bottom = 0;
    XPLMGetWindowGeometry(window, &left, &top, &right, &bottom);
    const int width = right - left, height = top - bottom;
    XPLMSetWindowGeometry(window, kScreenCentreX - width / 2, kScreenCentreY + height / 2,
                          kScreenCentreX + width / 2, kScreenCentreY - height / 2);
}

} // namespace HV_GNLUtils
