#ifndef XPLMDataAccess_h
#define XPLMDataAccess_h
/*
 * Datarefs: named values owned by X-Plane or by a plug-in, found by name and
 * read or written through typed accessors. A plug-in publishes its own values
 * by registering accessor callbacks.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Opaque handle of a dataref; NULL means "not found".
typedef void* XPLMDataRef;

/* Type bits of a dataref; a dataref may carry several (e.g. Float|Double). */
enum {
    xplmType_Unknown = 0,
    xplmType_Int = 1,
    xplmType_Float = 2,
    xplmType_Double = 4,
    xplmType_FloatArray = 8,
    xplmType_IntArray = 16,
    xplmType_Data = 32 /* a block of bytes */
};
typedef int XPLMDataTypeID;

#if defined(XPLM400)
/// What XPLMGetDataRefInfo reports; set structSize = sizeof before the call.
typedef struct {
    int structSize;      /* offset 0 */
    const char* name;    /* offset 8 */
    XPLMDataTypeID type; /* offset 16 */
    int writable;        /* offset 20 */
    XPLMPluginID owner;  /* offset 24; size 32 on LP64 */
} XPLMDataRefInfo_t;

/// Number of datarefs known to the sim; datarefs are never destroyed in a run.
XPLM_API int XPLMCountDataRefs(void);
/// Copies inCount handles starting at index inOffset into outDataRefs.
XPLM_API void XPLMGetDataRefsByIndex(int inOffset, int inCount, XPLMDataRef* outDataRefs);
/// Fills outInfo (whose structSize the caller sets).
XPLM_API void XPLMGetDataRefInfo(XPLMDataRef inDataRef, XPLMDataRefInfo_t* outInfo);
#endif

/// Looks a dataref up by its case-sensitive name; NULL if none. Slow: cache it.
XPLM_API XPLMDataRef XPLMFindDataRef(const char* inDataRefName);
/// 1 if the dataref accepts writes.
XPLM_API int XPLMCanWriteDataRef(XPLMDataRef inDataRef);
/// 1 if the handle is valid and its owner still publishes it. Slow.
XPLM_API int XPLMIsDataRefGood(XPLMDataRef inDataRef);
/// OR of the xplmType_ bits the dataref supports.
XPLM_API XPLMDataTypeID XPLMGetDataRefTypes(XPLMDataRef inDataRef);

/* Reads return 0 (copy nothing) and writes do nothing when the handle is NULL,
   orphaned or of the wrong type. */
/// Reads an int dataref.
XPLM_API int XPLMGetDatai(XPLMDataRef inDataRef);
/// Writes an int dataref.
XPLM_API void XPLMSetDatai(XPLMDataRef inDataRef, int inValue);
/// Reads a float dataref.
XPLM_API float XPLMGetDataf(XPLMDataRef inDataRef);
/// Writes a float dataref.
XPLM_API void XPLMSetDataf(XPLMDataRef inDataRef, float inValue);
/// Reads a double dataref.
XPLM_API double XPLMGetDatad(XPLMDataRef inDataRef);
/// Writes a double dataref.
XPLM_API void XPLMSetDatad(XPLMDataRef inDataRef, double inValue);
/// Copies up to inMax ints from index inOffset; with outValues NULL returns the array size.
XPLM_API int XPLMGetDatavi(XPLMDataRef inDataRef, int* outValues, int inOffset, int inMax);
/// Writes up to inCount ints from index inOffset (pointer is non-const in every SDK generation).
XPLM_API void XPLMSetDatavi(XPLMDataRef inDataRef, int* inValues, int inOffset, int inCount);
/// Copies up to inMax floats from index inOffset; with outValues NULL returns the array size.
XPLM_API int XPLMGetDatavf(XPLMDataRef inDataRef, float* outValues, int inOffset, int inMax);
/// Writes up to inCount floats from index inOffset.
XPLM_API void XPLMSetDatavf(XPLMDataRef inDataRef, float* inValues, int inOffset, int inCount);
/// Copies up to inMaxBytes bytes from byte inOffset; with outValue NULL returns the size in bytes.
XPLM_API int XPLMGetDatab(XPLMDataRef inDataRef, void* outValue, int inOffset, int inMaxBytes);
/// Writes inLength bytes at byte inOffset.
XPLM_API void XPLMSetDatab(XPLMDataRef inDataRef, void* inValue, int inOffset, int inLength);

/* Accessor callbacks of a published dataref; the refcon always comes first. */
typedef int (*XPLMGetDatai_f)(void* inRefcon);
typedef void (*XPLMSetDatai_f)(void* inRefcon, int inValue);
typedef float (*XPLMGetDataf_f)(void* inRefcon);
typedef void (*XPLMSetDataf_f)(void* inRefcon, float inValue);
typedef double (*XPLMGetDatad_f)(void* inRefcon);
typedef void (*XPLMSetDatad_f)(void* inRefcon, double inValue);
typedef int (*XPLMGetDatavi_f)(void* inRefcon, int* outValues, int inOffset, int inMax);
typedef void (*XPLMSetDatavi_f)(void* inRefcon, int* inValues, int inOffset, int inCount);
typedef int (*XPLMGetDatavf_f)(void* inRefcon, float* outValues, int inOffset, int inMax);
typedef void (*XPLMSetDatavf_f)(void* inRefcon, float* inValues, int inOffset, int inCount);
typedef int (*XPLMGetDatab_f)(void* inRefcon, void* outValue, int inOffset, int inMaxLength);
typedef void (*XPLMSetDatab_f)(void* inRefcon, void* inValue, int inOffset, int inLength);

/// Publishes a dataref; NULL for unsupported types and for the setters of read-only data.
/// The read refcon goes to the getters, the write refcon to the setters.
XPLM_API XPLMDataRef XPLMRegisterDataAccessor(
    const char* inDataName, XPLMDataTypeID inDataType, int inIsWritable, XPLMGetDatai_f inReadInt,
    XPLMSetDatai_f inWriteInt, XPLMGetDataf_f inReadFloat, XPLMSetDataf_f inWriteFloat,
    XPLMGetDatad_f inReadDouble, XPLMSetDatad_f inWriteDouble, XPLMGetDatavi_f inReadIntArray,
    XPLMSetDatavi_f inWriteIntArray, XPLMGetDatavf_f inReadFloatArray, XPLMSetDatavf_f inWriteFloatArray,
    XPLMGetDatab_f inReadData, XPLMSetDatab_f inWriteData, void* inReadRefcon, void* inWriteRefcon);
/// Withdraws a published dataref; its callbacks are never called again.
XPLM_API void XPLMUnregisterDataAccessor(XPLMDataRef inDataRef);

/// Called when another plug-in changes a shared dataref.
typedef void (*XPLMDataChanged_f)(void* inRefcon);
/// Creates or joins a shared dataref; 0 if the name exists with another type.
XPLM_API int XPLMShareData(const char* inDataName, XPLMDataTypeID inDataType,
                           XPLMDataChanged_f inNotificationFunc, void* inNotificationRefcon);
/// Leaves a shared dataref; the four arguments must match the XPLMShareData call.
XPLM_API int XPLMUnshareData(const char* inDataName, XPLMDataTypeID inDataType,
                             XPLMDataChanged_f inNotificationFunc, void* inNotificationRefcon);

#ifdef __cplusplus
}
#endif

#endif /* XPLMDataAccess_h */
