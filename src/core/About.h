// The "About Kalvora..." window: the logo, credits, thanks and the version.
// At most one is open; closing it frees it.
#pragma once

class HV_Panel;
class HV_Texture;
class HV_Window;

/// The About window and its logo texture.
class About {
public:
    HV_Texture* logo = nullptr; ///< owned; its texture is deleted on close
    HV_Window* window = nullptr;

    About() = default;
    ~About();
    About(const About&) = delete;
    About& operator=(const About&) = delete;

    /// Opens the window unless one is open already (gAbout set).
    static void OpenAbout();
    /// Lays out the window and centres it.
    void MakeDialog();
    /// Window handler: the close box frees the dialog, clears gAbout and closes (2); else 0.
    static int HV_WindowHandler(void* dialog, long message, HV_Panel* control, long param1, long param2);
};

/// The open About window, or null.
extern About* gAbout;
