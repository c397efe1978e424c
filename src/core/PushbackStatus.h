// The push-back status as other plug-ins see it through "halvern/kalvora/PBstatus".
#pragma once

/// 0 idle, 1 straight push, 2 tail right, 3 tail left (automated turns read as plain turns).
int GetPBStatus(void* refcon);
