#ifndef XPLMWeather_h
#define XPLMWeather_h
/*
 * The sim's weather: read the conditions at a place or an airport's last
 * METAR, and (XPLM 4.2 on) feed weather reports of one's own at a place or
 * an airport, singly or in a batch.
 *
 * Units: metres, metres per second, degrees true, Celsius, Pascals, ratios
 * 0..1, unless a field says otherwise.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(XPLM400)
/// One wind layer.
typedef struct {
    float alt_msl;    /* metres MSL */
    float speed;      /* m/s; negative when setting: layer undefined */
    float direction;  /* degrees true, where the wind comes from */
    float gust_speed; /* m/s, total speed in gusts */
    float shear;      /* degrees: half of this arc either side of direction */
    float turbulence; /* clear-air turbulence ratio */
} XPLMWeatherInfoWinds_t;

/// One cloud layer.
typedef struct {
    float cloud_type; /* the sim's cloud kind, as a float */
    float coverage;   /* ratio */
    float alt_top;    /* metres MSL */
    float alt_base;   /* metres MSL */
} XPLMWeatherInfoClouds_t;

#define XPLM_NUM_WIND_LAYERS 13
#define XPLM_NUM_CLOUD_LAYERS 3
#if defined(XPLM420)
#define XPLM_NUM_TEMPERATURE_LAYERS 13
/* Marks a wind layer as undefined when setting. */
#define XPLM_WIND_UNDEFINED_LAYER -1
/* Default reach of a report set by a plug-in: horizontal (nautical miles) and vertical (feet MSL). */
#define XPLM_DEFAULT_WXR_RADIUS_NM 30
#define XPLM_DEFAULT_WXR_RADIUS_MSL_FT 10000
#endif

/// The weather at one point; structSize says which version of the struct the caller holds (the
/// second version starts at temp_layers).
typedef struct {
    int structSize;
    float temperature_alt; /* at the given altitude, Celsius */
    float dewpoint_alt;    /* Celsius */
    float pressure_alt;    /* Pascals (QNH when setting; 0 to use pressure_sl) */
    float precip_rate_alt; /* read only */
    float wind_dir_alt;    /* degrees true; read only */
    float wind_spd_alt;    /* m/s; read only */
    float turbulence_alt;  /* ratio; read only */
    float wave_height;     /* metres */
    float wave_length;     /* metres; read only */
    int wave_dir;          /* degrees, where the waves come from */
    float wave_speed;      /* m/s; read only */
    float visibility;      /* metres, at the surface */
    float precip_rate;     /* ratio, at the surface */
    float thermal_climb;   /* m/s */
    float pressure_sl;     /* Pascals at sea level */
    XPLMWeatherInfoWinds_t wind_layers[XPLM_NUM_WIND_LAYERS];
    XPLMWeatherInfoClouds_t cloud_layers[XPLM_NUM_CLOUD_LAYERS];
#if defined(XPLM420)
    float temp_layers[XPLM_NUM_TEMPERATURE_LAYERS]; /* Celsius at the sim's fixed layer altitudes */
    float dewp_layers[XPLM_NUM_TEMPERATURE_LAYERS]; /* Celsius */
    float troposphere_alt;                          /* metres MSL */
    float troposphere_temp;                         /* Celsius */
    float age;                                      /* seconds since the report was made */
    float radius_nm;                                /* horizontal reach, nautical miles */
    float max_altitude_msl_ft;                      /* vertical reach, feet MSL */
#endif
} XPLMWeatherInfo_t;

/// The last downloaded METAR of an airport (empty when not in real-weather mode).
XPLM_API void XPLMGetMETARForAirport(const char* airport_id, XPLMFixedString150_t* outMETAR);
/// Fills out_info with the weather at a place; 1 when an airport's report was found near it, else 0.
XPLM_API int XPLMGetWeatherAtLocation(double latitude, double longitude, double altitude_m,
                                      XPLMWeatherInfo_t* out_info);

#if defined(XPLM420)
/// Starts a batch of weather reports; XPLMEndWeatherUpdate must follow in the same callback.
XPLM_API void XPLMBeginWeatherUpdate(void);
/// Applies the batch: incremental adds to the plug-in's earlier reports, otherwise replaces them all.
XPLM_API void XPLMEndWeatherUpdate(int isIncremental, int updateImmediately);
/// Adds a weather report at a place.
XPLM_API void XPLMSetWeatherAtLocation(double latitude, double longitude, double altitude_m,
                                       XPLMWeatherInfo_t* in_info);
/// Removes the plug-in's report at exactly this place.
XPLM_API void XPLMEraseWeatherAtLocation(double latitude, double longitude);
/// Replaces an airport's weather with this report.
XPLM_API void XPLMSetWeatherAtAirport(const char* airport_id, XPLMWeatherInfo_t* in_info);
/// Removes the plug-in's report at an airport.
XPLM_API void XPLMEraseWeatherAtAirport(const char* airport_id);
#endif
#endif /* XPLM400 */

#ifdef __cplusplus
}
#endif

#endif /* XPLMWeather_h */
