#ifndef XPLMMenus_h
#define XPLMMenus_h
/*
 * Menus in the sim's menu bar and the "Plugins" menu. Item indices are
 * 0-based and count only the calling plug-in's items. Texts are UTF-8.
 */

#include "XPLMDefs.h"
#include "XPLMUtilities.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The check mark of a menu item. */
enum {
    xplm_Menu_NoCheck = 0,   /* no mark */
    xplm_Menu_Unchecked = 1, /* mark shown, unlit */
    xplm_Menu_Checked = 2    /* mark lit */
};
typedef int XPLMMenuCheck;

/// Opaque handle of a menu; NULL means "none" (or the menu bar as a parent).
typedef void* XPLMMenuID;

/// Called with the menu's refcon (from XPLMCreateMenu) and the item's (from XPLMAppendMenuItem).
typedef void (*XPLMMenuHandler_f)(void* inMenuRef, void* inItemRef);

/// The sim's "Plugins" menu.
XPLM_API XPLMMenuID XPLMFindPluginsMenu(void);
#if defined(XPLM300)
/// The current aircraft's menu; NULL for plug-ins that do not belong to an aircraft.
XPLM_API XPLMMenuID XPLMFindAircraftMenu(void);
#endif
/// Creates a menu in the menu bar (parent NULL) or as the sub-menu of item inParentItem.
XPLM_API XPLMMenuID XPLMCreateMenu(const char* inName, XPLMMenuID inParentMenu, int inParentItem,
                                   XPLMMenuHandler_f inHandler, void* inMenuRef);
/// Destroys a menu.
XPLM_API void XPLMDestroyMenu(XPLMMenuID inMenuID);
/// Removes every item of a menu.
XPLM_API void XPLMClearAllMenuItems(XPLMMenuID inMenuID);
/// Appends an item; returns its index, negative on failure. Pass 0 as the last argument
/// (named inForceEnglish in older SDK generations; ignored).
XPLM_API int XPLMAppendMenuItem(XPLMMenuID inMenu, const char* inItemName, void* inItemRef,
                                int inDeprecatedAndIgnored);
#if defined(XPLM300)
/// Appends an item that runs a command instead of the handler.
XPLM_API int XPLMAppendMenuItemWithCommand(XPLMMenuID inMenu, const char* inItemName,
                                           XPLMCommandRef inCommandToExecute);
#endif
/// Appends a separator line.
XPLM_API void XPLMAppendMenuSeparator(XPLMMenuID inMenu);
/// Renames an item.
XPLM_API void XPLMSetMenuItemName(XPLMMenuID inMenu, int inIndex, const char* inItemName,
                                  int inDeprecatedAndIgnored);
/// Sets an item's check mark.
XPLM_API void XPLMCheckMenuItem(XPLMMenuID inMenu, int index, XPLMMenuCheck inCheck);
/// Reads an item's check mark into *outCheck.
XPLM_API void XPLMCheckMenuItemState(XPLMMenuID inMenu, int index, XPLMMenuCheck* outCheck);
/// Enables (1) or greys out (0) an item; items start enabled.
XPLM_API void XPLMEnableMenuItem(XPLMMenuID inMenu, int index, int enabled);
#if defined(XPLM210)
/// Removes an item; later items move up by one.
XPLM_API void XPLMRemoveMenuItem(XPLMMenuID inMenu, int inIndex);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMMenus_h */
