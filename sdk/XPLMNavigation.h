#ifndef XPLMNavigation_h
#define XPLMNavigation_h
/*
 * The sim's navigation database (airports, radio beacons, fixes), the flight
 * management system's waypoint lists and the GPS receiver's destination.
 *
 * Navaids are numbered by XPLMNavRef; the numbers run contiguously through the
 * database, so "next" is the following number. Frequencies follow the nav
 * database convention: NDBs in kHz as they are, everything else in 10 kHz units
 * (MHz x 100, 110.30 MHz = 11030).
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Kinds of navaid; a bit set, so a search may ask for several at once. */
enum {
    xplm_Nav_Unknown = 0,
    xplm_Nav_Airport = 1,
    xplm_Nav_NDB = 2,
    xplm_Nav_VOR = 4,
    xplm_Nav_ILS = 8,
    xplm_Nav_Localizer = 16,
    xplm_Nav_GlideSlope = 32,
    xplm_Nav_OuterMarker = 64,
    xplm_Nav_MiddleMarker = 128,
    xplm_Nav_InnerMarker = 256,
    xplm_Nav_Fix = 512,
    xplm_Nav_DME = 1024,
    xplm_Nav_LatLon = 2048,
    xplm_Nav_TACAN = 4096
};
typedef int XPLMNavType;

/// Index of a navaid in the database; XPLM_NAV_NOT_FOUND for none.
typedef int XPLMNavRef;
#define XPLM_NAV_NOT_FOUND -1

/// The first navaid of the database.
XPLM_API XPLMNavRef XPLMGetFirstNavAid(void);
/// The navaid after inNavAidRef, or XPLM_NAV_NOT_FOUND past the last.
XPLM_API XPLMNavRef XPLMGetNextNavAid(XPLMNavRef inNavAidRef);
/// First navaid of one kind (navaids of a kind are contiguous).
XPLM_API XPLMNavRef XPLMFindFirstNavAidOfType(XPLMNavType inType);
/// Last navaid of one kind.
XPLM_API XPLMNavRef XPLMFindLastNavAidOfType(XPLMNavType inType);
/// Searches navaids whose kind is in inType: each non-NULL criterion must hold (name or ID containing
/// the fragment, the exact frequency); with a position, the nearest match, otherwise the last one.
XPLM_API XPLMNavRef XPLMFindNavAid(const char* inNameFragment, const char* inIDFragment, float* inLat,
                                   float* inLon, int* inFrequency, XPLMNavType inType);
/// Fills the non-NULL outputs: ID (>= 32 bytes advised), name (>= 256), outReg a single 0/1 byte.
XPLM_API void XPLMGetNavAidInfo(XPLMNavRef inRef, XPLMNavType* outType, float* outLatitude,
                                float* outLongitude, float* outHeight, int* outFrequency, float* outHeading,
                                char* outID, char* outName, char* outReg);

/* The FMS: up to 100 contiguous entries, zero-based, each a navaid or a
   latitude/longitude plus an altitude in feet. */

/// Number of entries in the FMS.
XPLM_API int XPLMCountFMSEntries(void);
/// Entry the pilot is looking at.
XPLM_API int XPLMGetDisplayedFMSEntry(void);
/// Entry the FMS is flying to.
XPLM_API int XPLMGetDestinationFMSEntry(void);
XPLM_API void XPLMSetDisplayedFMSEntry(int inIndex);
/// The leg flown is from entry inIndex - 1 to entry inIndex.
XPLM_API void XPLMSetDestinationFMSEntry(int inIndex);
/// Fills the non-NULL outputs of one entry; outRef is XPLM_NAV_NOT_FOUND for a lat/lon entry.
XPLM_API void XPLMGetFMSEntryInfo(int inIndex, XPLMNavType* outType, char* outID, XPLMNavRef* outRef,
                                  int* outAltitude, float* outLat, float* outLon);
/// Makes an entry an airport, fix, VOR or NDB at an altitude (feet).
XPLM_API void XPLMSetFMSEntryInfo(int inIndex, XPLMNavRef inRef, int inAltitude);
/// Makes an entry a latitude/longitude waypoint.
XPLM_API void XPLMSetFMSEntryLatLon(int inIndex, float inLat, float inLon, int inAltitude);
/// Clears an entry; clearing the last one shortens the plan.
XPLM_API void XPLMClearFMSEntry(int inIndex);

#if defined(XPLM410)
/* The flight plans of the two navigation units: each has a primary plan and
   an approach (GPS) or temporary (FMS) one. */
enum {
    xplm_Fpl_Pilot_Primary = 0,
    xplm_Fpl_CoPilot_Primary = 1,
    xplm_Fpl_Pilot_Approach = 2,
    xplm_Fpl_CoPilot_Approach = 3,
    xplm_Fpl_Pilot_Temporary = 4,
    xplm_Fpl_CoPilot_Temporary = 5
};
typedef int XPLMNavFlightPlan;

XPLM_API int XPLMCountFMSFlightPlanEntries(XPLMNavFlightPlan inFlightPlan);
XPLM_API int XPLMGetDisplayedFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan);
XPLM_API int XPLMGetDestinationFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan);
XPLM_API void XPLMSetDisplayedFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex);
XPLM_API void XPLMSetDestinationFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex);
/// Flies directly to an entry.
XPLM_API void XPLMSetDirectToFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex);
XPLM_API void XPLMGetFMSFlightPlanEntryInfo(XPLMNavFlightPlan inFlightPlan, int inIndex, XPLMNavType* outType,
                                            char* outID, XPLMNavRef* outRef, int* outAltitude, float* outLat,
                                            float* outLon);
XPLM_API void XPLMSetFMSFlightPlanEntryInfo(XPLMNavFlightPlan inFlightPlan, int inIndex, XPLMNavRef inRef,
                                            int inAltitude);
XPLM_API void XPLMSetFMSFlightPlanEntryLatLon(XPLMNavFlightPlan inFlightPlan, int inIndex, float inLat,
                                              float inLon, int inAltitude);
/// A lat/lon entry with a name of inIdLength bytes.
XPLM_API void XPLMSetFMSFlightPlanEntryLatLonWithId(XPLMNavFlightPlan inFlightPlan, int inIndex, float inLat,
                                                    float inLon, int inAltitude, const char* inId,
                                                    unsigned int inIdLength);
XPLM_API void XPLMClearFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex);
/// Loads a flight plan in the sim's .fms text format into unit 0 (pilot) or 1 (co-pilot).
XPLM_API void XPLMLoadFMSFlightPlan(int inDevice, const char* inBuffer, unsigned int inBufferLen);
/// Writes a unit's flight plan as .fms text; returns the bytes needed including the terminating NUL
/// (the text is terminated only when it fits).
XPLM_API unsigned int XPLMSaveFMSFlightPlan(int inDevice, char* inBuffer, unsigned int inBufferLen);
#endif

/// Kind of the GPS's destination: fix, airport, VOR or NDB.
XPLM_API XPLMNavType XPLMGetGPSDestinationType(void);
/// The GPS's destination.
XPLM_API XPLMNavRef XPLMGetGPSDestination(void);

#ifdef __cplusplus
}
#endif

#endif /* XPLMNavigation_h */
