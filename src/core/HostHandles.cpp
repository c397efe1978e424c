#include "core/HostHandles.h"

#include "core/Instancing.h"
#include "core/LocalOrigin.h"
#include "images/Texture.h"
#include "objects/ObjDraw8.h"
#include "toolkit/Colors.h"
#include "toolkit/OGLUtils.h"
#include "utils/GNLUtils.h"

void ForgetHostHandles() {
    HV_GNLUtils::ForgetHostHandles();
    HV_Texture::FindDataRefs();
    HV_OGLUtils::FindDataRefs();
    HV_OGLUtils::ForgetXPColors();
    ForgetDefaultAnimParam();
    ForgetHostInstancing();
    ForgetLocalOrigin();
}
