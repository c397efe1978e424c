// The "Kalvora" menu under the host's Plugins menu, its "Trucks" sub-menu and
// the handler of both.
#pragma once

/// Item references the host hands back to KLVMenuHandlerCallback (trucks: kMenuFirstTruck + index).
enum {
    kMenuAbout = 0,
    kMenuPreferences = 1,
    kMenuGPU = 2,
    kMenuStraight = 3,
    kMenuTurnTailRight = 4,
    kMenuTurnTailLeft = 5,
    kMenuAutoTailRight = 6,
    kMenuAutoTailLeft = 7,
    kMenuStop = 8,
    kMenuFirstTruck = 9
};

/// Positions in the "Kalvora" menu that the handler changes (separators count as items).
constexpr int kMenuPosGPUSeparator = 2;
constexpr int kMenuPosGPU = 3;

/// Builds "Kalvora" (every item and separator) and "Trucks" (one item per TruckList entry).
void BuildKLVMenus();
/// Menu handler of both menus; only itemRef (an int carried in the pointer) is used.
void KLVMenuHandlerCallback(void* menuRef, void* itemRef);
/// Makes TruckList[index] the truck: PrefLastTruck, its model, and the check marks of "Trucks".
void SelectTruck(int index);
