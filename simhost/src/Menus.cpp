// XPLMMenus.h: the menu bar with X-Plane's "Plugins" menu, plug-ins' menus and
// items, and the control side (the tree as text, picking an item by path).
//
// Item indices are per plug-in: in a menu shared by several plug-ins (the
// Plugins menu) each plug-in counts only its own items, separators included.
#include "HostInternal.h"

#include "XPLMMenus.h"
#include "XPLMUtilities.h"

#include <sstream>

namespace simhost::detail {

namespace {

MenuRec* validMenu(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->menuHandles.count(handle)) return nullptr;
    auto* m = static_cast<MenuRec*>(handle);
    return m->alive ? m : nullptr;
}

MenuRec& newMenu(HostCore& c, const std::string& name, int owner) {
    c.menus.emplace_back();
    MenuRec& m = c.menus.back();
    m.name = name;
    m.owner = owner;
    c.menuHandles.insert(&m);
    return m;
}

/// Position in m.items of the caller's index-th item, or -1.
int slotOf(const MenuRec& m, int index, int owner) {
    if (index < 0) return -1;
    for (size_t i = 0; i < m.items.size(); ++i) {
        if (m.items[i].owner != owner) continue;
        if (index-- == 0) return static_cast<int>(i);
    }
    return -1;
}

int countOwn(const MenuRec& m, int owner) {
    int n = 0;
    for (const MenuItemRec& it : m.items)
        n += it.owner == owner ? 1 : 0;
    return n;
}

void killMenu(MenuRec& m) {
    m.alive = false;
    for (MenuItemRec& it : m.items)
        if (it.submenu) killMenu(*it.submenu);
    m.items.clear();
    if (m.parent) {
        for (MenuItemRec& it : m.parent->items)
            if (it.submenu == &m) it.submenu = nullptr;
    }
    for (size_t i = 0; i < core()->topMenus.size(); ++i)
        if (core()->topMenus[i] == &m)
            core()->topMenus.erase(core()->topMenus.begin() + static_cast<long>(i));
}

std::vector<std::string> splitPath(const std::string& path) {
    std::vector<std::string> parts;
    std::string cur;
    for (char ch : path) {
        if (ch == '/') {
            parts.push_back(cur);
            cur.clear();
        } else {
            cur += ch;
        }
    }
    parts.push_back(cur);
    return parts;
}

void dump(const MenuRec& m, int depth, std::ostringstream& out) {
    for (const MenuItemRec& it : m.items) {
        out << std::string(static_cast<size_t>(depth) * 2, ' ');
        if (it.separator) {
            out << "-----\n";
            continue;
        }
        if (it.check == 1) out << "[ ] ";
        if (it.check == 2) out << "[x] ";
        out << it.name;
        if (it.submenu) out << " >";
        if (!it.enabled) out << " (disabled)";
        out << "\n";
        if (it.submenu) dump(*it.submenu, depth + 1, out);
    }
}

} // namespace

void createRootMenus(HostCore& c) {
    c.topMenus.clear();
    c.pluginsMenu = &newMenu(c, "Plugins", 0);
    c.topMenus.push_back(c.pluginsMenu);
}

/// The item a path of names leads to (and the menu holding it); enabled = every step enabled.
struct MenuHit {
    MenuRec* menu = nullptr;
    MenuItemRec* item = nullptr;
    bool enabled = true;
};

MenuHit findMenuPath(const std::string& path) {
    MenuHit hit;
    std::vector<std::string> parts = splitPath(path);
    MenuRec* menu = nullptr;
    for (MenuRec* top : core()->topMenus)
        if (top->alive && top->name == parts[0]) menu = top;
    if (!menu) return hit;
    if (parts.size() == 1) {
        hit.menu = menu;
        return hit;
    }
    for (size_t i = 1; i < parts.size(); ++i) {
        MenuItemRec* found = nullptr;
        for (MenuItemRec& it : menu->items)
            if (!it.separator && it.name == parts[i]) {
                found = &it;
                break;
            }
        if (!found) return MenuHit{};
        hit.enabled = hit.enabled && found->enabled;
        hit.menu = menu;
        hit.item = found;
        if (i + 1 < parts.size()) {
            if (!found->submenu) return MenuHit{};
            menu = found->submenu;
        }
    }
    return hit;
}

std::string menuTreeText() {
    std::ostringstream out;
    for (MenuRec* top : core()->topMenus) {
        if (!top->alive) continue;
        out << top->name << "\n";
        dump(*top, 1, out);
    }
    return out.str();
}

std::vector<std::string> menuItemNames(const std::string& path) {
    std::vector<std::string> names;
    MenuHit hit = findMenuPath(path);
    MenuRec* m = hit.item ? hit.item->submenu : hit.menu;
    if (!m) return names;
    for (const MenuItemRec& it : m->items)
        names.push_back(it.separator ? "-" : it.name);
    return names;
}

bool pickMenuPath(const std::string& path) {
    MenuHit hit = findMenuPath(path);
    if (!hit.item || !hit.enabled || hit.item->submenu) return false;
    MenuRec* m = hit.menu;
    MenuItemRec item = *hit.item; // the handler may change the menu
    record("menu", path);
    if (item.command) {
        XPLMCommandOnce(item.command);
        return true;
    }
    if (m->handler && pluginActive(m->owner)) {
        auto fn = reinterpret_cast<XPLMMenuHandler_f>(m->handler);
        void* menuRef = m->menuRef;
        callInto(m->owner, "menu handler", [&] { fn(menuRef, item.itemRef); });
    }
    return true;
}

int menuCheckAt(const std::string& path) {
    MenuHit hit = findMenuPath(path);
    return hit.item ? hit.item->check : -1;
}

bool menuEnabledAt(const std::string& path) {
    MenuHit hit = findMenuPath(path);
    return hit.item && hit.enabled;
}

void dropMenus(HostCore& c, int pluginId) {
    for (MenuRec& m : c.menus) {
        if (!m.alive) continue;
        if (m.owner == pluginId && m.owner != 0) {
            killMenu(m);
            continue;
        }
    }
    for (MenuRec& m : c.menus) {
        if (!m.alive) continue;
        for (size_t i = m.items.size(); i-- > 0;)
            if (m.items[i].owner == pluginId) {
                if (m.items[i].submenu) killMenu(*m.items[i].submenu);
                m.items.erase(m.items.begin() + static_cast<long>(i));
            }
    }
}

void listMenus(const HostCore& c, int pluginId, std::vector<std::string>& out) {
    for (const MenuRec& m : c.menus) {
        if (!m.alive) continue;
        if (m.owner == pluginId) out.push_back("menu " + m.name);
        for (const MenuItemRec& it : m.items)
            if (it.owner == pluginId && m.owner != pluginId)
                out.push_back("menu item " + m.name + "/" + (it.separator ? "-----" : it.name));
    }
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

XPLMMenuID XPLMFindPluginsMenu(void) {
    HostCore* c = core();
    return c ? c->pluginsMenu : nullptr;
}

XPLMMenuID XPLMFindAircraftMenu(void) {
    return nullptr; /* no plug-in here is an aircraft's */
}

XPLMMenuID XPLMCreateMenu(const char* inName, XPLMMenuID inParentMenu, int inParentItem,
                          XPLMMenuHandler_f inHandler, void* inMenuRef) {
    HostCore* c = core();
    if (!c || !inName || !*inName) {
        apiError("XPLMCreateMenu: a menu needs a name");
        return nullptr;
    }
    const int me = caller();
    MenuRec* parent = nullptr;
    int slot = -1;
    if (inParentMenu) {
        parent = validMenu(inParentMenu);
        if (!parent) return nullptr;
        slot = slotOf(*parent, inParentItem, me);
        if (slot < 0 || parent->items[static_cast<size_t>(slot)].separator) {
            apiError("XPLMCreateMenu: no item " + std::to_string(inParentItem) + " in " + parent->name);
            return nullptr;
        }
    }
    MenuRec& m = newMenu(*c, inName, me);
    m.handler = reinterpret_cast<void*>(inHandler);
    m.menuRef = inMenuRef;
    m.parent = parent;
    if (parent) {
        MenuItemRec& anchor = parent->items[static_cast<size_t>(slot)];
        if (anchor.submenu) killMenu(*anchor.submenu);
        anchor.submenu = &m;
    } else {
        core()->topMenus.push_back(&m);
    }
    return &m;
}

void XPLMDestroyMenu(XPLMMenuID inMenuID) {
    MenuRec* m = validMenu(inMenuID);
    if (!m || m == core()->pluginsMenu) return;
    killMenu(*m);
}

void XPLMClearAllMenuItems(XPLMMenuID inMenuID) {
    MenuRec* m = validMenu(inMenuID);
    if (!m) return;
    const int me = caller();
    for (size_t i = m->items.size(); i-- > 0;) {
        if (m->items[i].owner != me) continue;
        if (m->items[i].submenu) killMenu(*m->items[i].submenu);
        m->items.erase(m->items.begin() + static_cast<long>(i));
    }
}

int XPLMAppendMenuItem(XPLMMenuID inMenu, const char* inItemName, void* inItemRef, int) {
    MenuRec* m = validMenu(inMenu);
    if (!m || !inItemName) return -1;
    const int me = caller();
    MenuItemRec it;
    it.name = inItemName;
    it.owner = me;
    it.itemRef = inItemRef;
    m->items.push_back(it);
    return countOwn(*m, me) - 1;
}

int XPLMAppendMenuItemWithCommand(XPLMMenuID inMenu, const char* inItemName,
                                  XPLMCommandRef inCommandToExecute) {
    int index = XPLMAppendMenuItem(inMenu, inItemName, nullptr, 0);
    if (index >= 0) {
        MenuRec* m = validMenu(inMenu);
        m->items[static_cast<size_t>(slotOf(*m, index, caller()))].command = inCommandToExecute;
    }
    return index;
}

void XPLMAppendMenuSeparator(XPLMMenuID inMenu) {
    MenuRec* m = validMenu(inMenu);
    if (!m) return;
    MenuItemRec it;
    it.separator = true;
    it.owner = caller();
    m->items.push_back(it);
}

namespace {
MenuItemRec* itemAt(XPLMMenuID menu, int index) {
    MenuRec* m = validMenu(menu);
    if (!m) return nullptr;
    int slot = slotOf(*m, index, caller());
    return slot < 0 ? nullptr : &m->items[static_cast<size_t>(slot)];
}
} // namespace

void XPLMSetMenuItemName(XPLMMenuID inMenu, int inIndex, const char* inItemName, int) {
    if (MenuItemRec* it = itemAt(inMenu, inIndex))
        if (inItemName) it->name = inItemName;
}

void XPLMCheckMenuItem(XPLMMenuID inMenu, int index, XPLMMenuCheck inCheck) {
    if (MenuItemRec* it = itemAt(inMenu, index)) it->check = (inCheck >= 0 && inCheck <= 2) ? inCheck : 0;
}

void XPLMCheckMenuItemState(XPLMMenuID inMenu, int index, XPLMMenuCheck* outCheck) {
    MenuItemRec* it = itemAt(inMenu, index);
    if (outCheck) *outCheck = it ? it->check : 0;
}

void XPLMEnableMenuItem(XPLMMenuID inMenu, int index, int enabled) {
    if (MenuItemRec* it = itemAt(inMenu, index)) it->enabled = enabled != 0;
}

void XPLMRemoveMenuItem(XPLMMenuID inMenu, int inIndex) {
    MenuRec* m = validMenu(inMenu);
    if (!m) return;
    int slot = slotOf(*m, inIndex, caller());
    if (slot < 0) return;
    if (m->items[static_cast<size_t>(slot)].submenu) killMenu(*m->items[static_cast<size_t>(slot)].submenu);
    m->items.erase(m->items.begin() + slot);
}

} // extern "C"
