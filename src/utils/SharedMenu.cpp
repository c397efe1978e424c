// The menu shared by all of the maker's plug-ins: the first one creates it and publishes its
// ID through a dataref; the others find it there and add their items under it.
//
// The ID is published as an integer, as every plug-in of the family reads it. A menu ID is a
// pointer, which does not fit an int on 64-bit hosts, so the dataref also carries the whole
// ID as 8 bytes of data; readers that know it take those.
#include "utils/GNLUtils.h"

#include "utils/HostRelease.h"

#include "XPLMDataAccess.h"

#include <cstdint>
#include <cstring>

namespace {

XPLMMenuID gXPLMMenuID = nullptr;
XPLMMenuID gCreatedMenu = nullptr;    ///< the menu this plug-in created, if it did
XPLMDataRef gPublishedMenu = nullptr; ///< our accessor when this plug-in created the menu

int ReadMenuIntCallBack(void*) {
    return static_cast<int>(reinterpret_cast<intptr_t>(gXPLMMenuID));
}

void WriteMenuIntCallBack(void*, int value) {
    gXPLMMenuID = reinterpret_cast<XPLMMenuID>(static_cast<intptr_t>(value));
}

int ReadMenuBytesCallBack(void*, void* out, int offset, int maxBytes) {
    const intptr_t id = reinterpret_cast<intptr_t>(gXPLMMenuID);
    const int size = static_cast<int>(sizeof id);
    if (!out) return size;
    if (offset < 0 || offset >= size || maxBytes <= 0) return 0;
    const int count = maxBytes < size - offset ? maxBytes : size - offset;
    memcpy(out, reinterpret_cast<const char*>(&id) + offset, static_cast<size_t>(count));
    return count;
}

void WriteMenuBytesCallBack(void*, void* in, int offset, int length) {
    if (!in || offset != 0 || length != static_cast<int>(sizeof(intptr_t))) return;
    intptr_t id = 0;
    memcpy(&id, in, sizeof id);
    gXPLMMenuID = reinterpret_cast<XPLMMenuID>(id);
}

/// The ID published by another plug-in: the whole pointer when offered, else the integer.
XPLMMenuID ReadPublishedMenu(XPLMDataRef ref) {
    if (XPLMGetDataRefTypes(ref) & xplmType_Data) {
        intptr_t id = 0;
        if (XPLMGetDatab(ref, &id, 0, static_cast<int>(sizeof id)) == static_cast<int>(sizeof id))
            return reinterpret_cast<XPLMMenuID>(id);
    }
    return reinterpret_cast<XPLMMenuID>(static_cast<intptr_t>(XPLMGetDatai(ref)));
}

} // namespace

namespace HV_GNLUtils {

XPLMMenuID GetHVMenuID() {
    if (gXPLMMenuID) return gXPLMMenuID;
    // A name whose publisher has gone (unregistered or unloaded) is not "good": take over.
    XPLMDataRef published = XPLMFindDataRef(kHVMenuDataRef);
    if (published && XPLMIsDataRefGood(published)) {
        gXPLMMenuID = ReadPublishedMenu(published);
        return gXPLMMenuID;
    }
    gXPLMMenuID = XPLMCreateMenu(kHVMenuName, nullptr, 0, nullptr, nullptr);
    if (!gXPLMMenuID) return nullptr;
    gCreatedMenu = gXPLMMenuID;
    gPublishedMenu = XPLMRegisterDataAccessor(
        kHVMenuDataRef, xplmType_Int | xplmType_Data, 1, ReadMenuIntCallBack, WriteMenuIntCallBack, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, ReadMenuBytesCallBack,
        WriteMenuBytesCallBack, nullptr, nullptr);
    return gXPLMMenuID;
}

namespace detail {
void ReleaseSharedMenu() {
    if (gPublishedMenu) XPLMUnregisterDataAccessor(gPublishedMenu);
    if (gCreatedMenu) XPLMDestroyMenu(gCreatedMenu);
    gPublishedMenu = nullptr;
    gCreatedMenu = nullptr;
    gXPLMMenuID = nullptr;
}
} // namespace detail

} // namespace HV_GNLUtils
