// XPLMDataAccess.h: finding, reading, writing and publishing datarefs.
//
// X-Plane's rules: a read through the wrong type, a NULL or orphaned handle or a
// disabled owner gives 0 and copies nothing; such a write does nothing. Array
// reads with a NULL buffer return the array size; offsets and counts are
// clipped to the array.
#include "HostInternal.h"

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace simhost::detail {

DataRefRec* findDataRefRec(const std::string& name) {
    HostCore* c = core();
    if (!c) return nullptr;
    auto it = c->datarefByName.find(name);
    // One of X-Plane's own that no one asked for yet gets its record now.
    return it == c->datarefByName.end() ? makeXPlaneDataRef(*c, name) : it->second;
}

DataRefRec* validDataRef(void* handle) {
    HostCore* c = core();
    if (!c || !handle) return nullptr;
    // Fibonacci hashing of the address (records are a few hundred bytes apart) to a slot.
    constexpr uint64_t kGoldenRatio64 = 0x9E3779B97F4A7C15ull;
    constexpr int kSlotBits = 6; // 64 slots
    static_assert(sizeof c->recentDataRefHandles / sizeof(void*) == 1u << kSlotBits, "one slot per hash");
    const uint64_t address = reinterpret_cast<uintptr_t>(handle);
    const size_t slot = static_cast<size_t>((address * kGoldenRatio64) >> (64 - kSlotBits));
    const void*& recent = c->recentDataRefHandles[slot];
    if (recent != handle) {
        if (!c->datarefHandles.count(handle)) return nullptr;
        recent = handle;
    }
    return static_cast<DataRefRec*>(handle);
}

namespace {

/// A dataref that can be read or written right now, or nullptr.
DataRefRec* live(void* handle) {
    DataRefRec* r = validDataRef(handle);
    if (!r || r->orphaned) return nullptr;
    if (r->owner != 0 && !pluginActive(r->owner)) return nullptr;
    return r;
}

bool isSim(const DataRefRec* r) {
    return r->owner == 0;
}

/// Writable by the plug-in calling now (a few of X-Plane's own take one plug-in's writes only).
bool writableNow(const DataRefRec* r) {
    return r->writable && (!r->writerOnly || r->writer == caller());
}

/// Clips [offset, offset+count) to an array of `size` items; returns the count (>= 0).
int clip(int size, int offset, int count) {
    if (offset < 0 || count <= 0 || offset >= size) return 0;
    return std::min(count, size - offset);
}

int toInt(double v) {
    if (std::isnan(v)) return 0;
    if (v >= static_cast<double>(std::numeric_limits<int>::max())) return std::numeric_limits<int>::max();
    if (v <= static_cast<double>(std::numeric_limits<int>::min())) return std::numeric_limits<int>::min();
    return static_cast<int>(v);
}

constexpr size_t kMaxSharedItems = 65536; ///< bound on a shared array's elements or bytes

/// X-Plane takes a NaN or an infinity into its own datarefs without a word, and its flight model or
/// drawing then misbehaves: such a write by a plug-in is recorded ("dataref" in the transcript).
template <class T> void noteNonFinite(const DataRefRec* r, const T* values, int offset, int count) {
    for (int i = 0; i < count; ++i) {
        if (std::isfinite(static_cast<double>(values[i]))) continue;
        const PluginRec* writer = plugin(caller());
        record("dataref", "non-finite write: " + r->name + "[" + std::to_string(offset + i) +
                              "] = " + std::to_string(static_cast<double>(values[i])) + " by " +
                              (writer ? writer->name : std::string("?")));
    }
}

void simWrote(DataRefRec* r) {
    if (r->onWrite) r->onWrite(*r);
    if (!r->shared) return;
    const std::vector<DataRefRec::Sharer> sharers = r->sharers; // a callback may unshare
    for (const DataRefRec::Sharer& s : sharers) {
        if (!s.notify || !pluginActive(s.plugin)) continue;
        auto fn = reinterpret_cast<XPLMDataChanged_f>(s.notify);
        callInto(s.plugin, "shared data notification", [&] { fn(s.refcon); });
    }
}

/// A shared array or byte block grows to hold what a plug-in writes (within a bound).
template <class V> void growShared(DataRefRec* r, V& storage, int offset, int count) {
    if (!r->shared || offset < 0 || count <= 0) return;
    const size_t end = static_cast<size_t>(offset) + static_cast<size_t>(count);
    if (end > storage.size() && end <= kMaxSharedItems) storage.resize(end);
}

template <class R, class F> R readVia(DataRefRec* r, void* fn, F&& call) {
    R out{};
    if (!fn) return out;
    callInto(r->owner, "dataref read", [&] { out = call(); });
    return out;
}

template <class F> void writeVia(DataRefRec* r, void* fn, F&& call) {
    if (!fn) return;
    callInto(r->owner, "dataref write", [&] { call(); });
}

/// Array read with X-Plane's rules, from X-Plane's own values or the owner's accessor.
template <class Fn, class T>
int readArray(void* handle, int typeBit, void* Accessors::*getter, T* out, int offset, int max) {
    DataRefRec* r = live(handle);
    if (!r || !(r->types & typeBit)) return 0;
    if (isSim(r)) {
        const int size = static_cast<int>(r->values.size());
        if (!out) return size;
        const int n = clip(size, offset, max);
        for (int i = 0; i < n; ++i) {
            const double v = r->values[static_cast<size_t>(offset + i)];
            out[i] = std::is_integral<T>::value ? static_cast<T>(toInt(v)) : static_cast<T>(v);
        }
        return n;
    }
    void* fn = r->acc.*getter;
    return readVia<int>(r, fn, [&] { return reinterpret_cast<Fn>(fn)(r->acc.readRefcon, out, offset, max); });
}

/// Array write with X-Plane's rules.
template <class Fn, class T>
void writeArray(void* handle, int typeBit, void* Accessors::*setter, T* in, int offset, int count) {
    DataRefRec* r = live(handle);
    if (!r || !writableNow(r) || !(r->types & typeBit) || !in) return;
    if (isSim(r)) {
        growShared(r, r->values, offset, count);
        const int n = clip(static_cast<int>(r->values.size()), offset, count);
        noteNonFinite(r, in, offset, n);
        for (int i = 0; i < n; ++i)
            r->values[static_cast<size_t>(offset + i)] = in[i];
        if (n > 0) simWrote(r);
        return;
    }
    void* fn = r->acc.*setter;
    writeVia(r, fn, [&] { reinterpret_cast<Fn>(fn)(r->acc.writeRefcon, in, offset, count); });
}

} // namespace
} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

XPLMDataRef XPLMFindDataRef(const char* inDataRefName) {
    if (!inDataRefName) return nullptr;
    DataRefRec* r = findDataRefRec(inDataRefName);
    if (!r || r->removed) return nullptr;
    return r;
}

int XPLMCanWriteDataRef(XPLMDataRef inDataRef) {
    DataRefRec* r = live(inDataRef);
    return r && writableNow(r) ? 1 : 0;
}

int XPLMIsDataRefGood(XPLMDataRef inDataRef) {
    return live(inDataRef) ? 1 : 0;
}

XPLMDataTypeID XPLMGetDataRefTypes(XPLMDataRef inDataRef) {
    DataRefRec* r = validDataRef(inDataRef);
    return r ? r->types : xplmType_Unknown;
}

int XPLMCountDataRefs(void) {
    HostCore* c = core();
    return c ? static_cast<int>(dataRefCount(*c)) : 0;
}

void XPLMGetDataRefsByIndex(int inOffset, int inCount, XPLMDataRef* outDataRefs) {
    HostCore* c = core();
    if (!c || !outDataRefs) return;
    makeAllXPlaneDataRefs(*c); // indices are stable from the first listing on
    // Hidden datarefs are not listed, as they are not counted; the listing walks past them.
    const int n = clip(static_cast<int>(dataRefCount(*c)), inOffset, inCount);
    int index = 0, filled = 0;
    for (auto it = c->datarefs.begin(); it != c->datarefs.end() && filled < n; ++it) {
        if (it->removed) continue;
        if (index++ >= inOffset) outDataRefs[filled++] = &*it;
    }
}

void XPLMGetDataRefInfo(XPLMDataRef inDataRef, XPLMDataRefInfo_t* outInfo) {
    DataRefRec* r = validDataRef(inDataRef);
    if (!r || !outInfo) return;
    outInfo->name = r->name.c_str();
    outInfo->type = r->types;
    outInfo->writable = r->writable ? 1 : 0;
    outInfo->owner = r->owner;
}

int XPLMGetDatai(XPLMDataRef inDataRef) {
    DataRefRec* r = live(inDataRef);
    if (!r || !(r->types & xplmType_Int)) return 0;
    if (isSim(r)) return r->values.empty() ? 0 : toInt(r->values[0]);
    return readVia<int>(r, r->acc.gi,
                        [&] { return reinterpret_cast<XPLMGetDatai_f>(r->acc.gi)(r->acc.readRefcon); });
}

void XPLMSetDatai(XPLMDataRef inDataRef, int inValue) {
    DataRefRec* r = live(inDataRef);
    if (!r || !writableNow(r) || !(r->types & xplmType_Int)) return;
    if (isSim(r)) {
        if (!r->values.empty()) r->values[0] = inValue;
        simWrote(r);
        return;
    }
    writeVia(r, r->acc.si, [&] { reinterpret_cast<XPLMSetDatai_f>(r->acc.si)(r->acc.writeRefcon, inValue); });
}

float XPLMGetDataf(XPLMDataRef inDataRef) {
    DataRefRec* r = live(inDataRef);
    if (!r || !(r->types & xplmType_Float)) return 0;
    if (isSim(r)) return r->values.empty() ? 0.0f : static_cast<float>(r->values[0]);
    return readVia<float>(r, r->acc.gf,
                          [&] { return reinterpret_cast<XPLMGetDataf_f>(r->acc.gf)(r->acc.readRefcon); });
}

void XPLMSetDataf(XPLMDataRef inDataRef, float inValue) {
    DataRefRec* r = live(inDataRef);
    if (!r || !writableNow(r) || !(r->types & xplmType_Float)) return;
    if (isSim(r)) {
        noteNonFinite(r, &inValue, 0, 1);
        if (!r->values.empty()) r->values[0] = inValue;
        simWrote(r);
        return;
    }
    writeVia(r, r->acc.sf, [&] { reinterpret_cast<XPLMSetDataf_f>(r->acc.sf)(r->acc.writeRefcon, inValue); });
}

double XPLMGetDatad(XPLMDataRef inDataRef) {
    DataRefRec* r = live(inDataRef);
    if (!r || !(r->types & xplmType_Double)) return 0;
    if (isSim(r)) return r->values.empty() ? 0.0 : r->values[0];
    return readVia<double>(r, r->acc.gd,
                           [&] { return reinterpret_cast<XPLMGetDatad_f>(r->acc.gd)(r->acc.readRefcon); });
}

void XPLMSetDatad(XPLMDataRef inDataRef, double inValue) {
    DataRefRec* r = live(inDataRef);
    if (!r || !writableNow(r) || !(r->types & xplmType_Double)) return;
    if (isSim(r)) {
        noteNonFinite(r, &inValue, 0, 1);
        if (!r->values.empty()) r->values[0] = inValue;
        simWrote(r);
        return;
    }
    writeVia(r, r->acc.sd, [&] { reinterpret_cast<XPLMSetDatad_f>(r->acc.sd)(r->acc.writeRefcon, inValue); });
}

int XPLMGetDatavi(XPLMDataRef inDataRef, int* outValues, int inOffset, int inMax) {
    return readArray<XPLMGetDatavi_f>(inDataRef, xplmType_IntArray, &Accessors::gvi, outValues, inOffset,
                                      inMax);
}

void XPLMSetDatavi(XPLMDataRef inDataRef, int* inValues, int inOffset, int inCount) {
    writeArray<XPLMSetDatavi_f>(inDataRef, xplmType_IntArray, &Accessors::svi, inValues, inOffset, inCount);
}

int XPLMGetDatavf(XPLMDataRef inDataRef, float* outValues, int inOffset, int inMax) {
    return readArray<XPLMGetDatavf_f>(inDataRef, xplmType_FloatArray, &Accessors::gvf, outValues, inOffset,
                                      inMax);
}

void XPLMSetDatavf(XPLMDataRef inDataRef, float* inValues, int inOffset, int inCount) {
    writeArray<XPLMSetDatavf_f>(inDataRef, xplmType_FloatArray, &Accessors::svf, inValues, inOffset, inCount);
}

int XPLMGetDatab(XPLMDataRef inDataRef, void* outValue, int inOffset, int inMaxBytes) {
    DataRefRec* r = live(inDataRef);
    if (!r || !(r->types & xplmType_Data)) return 0;
    if (isSim(r)) {
        int size = static_cast<int>(r->bytes.size());
        if (!outValue) return size;
        int n = clip(size, inOffset, inMaxBytes);
        if (n > 0) std::memcpy(outValue, r->bytes.data() + inOffset, static_cast<size_t>(n));
        return n;
    }
    return readVia<int>(r, r->acc.gb, [&] {
        return reinterpret_cast<XPLMGetDatab_f>(r->acc.gb)(r->acc.readRefcon, outValue, inOffset, inMaxBytes);
    });
}

void XPLMSetDatab(XPLMDataRef inDataRef, void* inValue, int inOffset, int inLength) {
    DataRefRec* r = live(inDataRef);
    if (!r || !writableNow(r) || !(r->types & xplmType_Data) || !inValue) return;
    if (isSim(r)) {
        growShared(r, r->bytes, inOffset, inLength);
        int n = clip(static_cast<int>(r->bytes.size()), inOffset, inLength);
        if (n > 0) {
            std::memcpy(&r->bytes[static_cast<size_t>(inOffset)], inValue, static_cast<size_t>(n));
            simWrote(r);
        }
        return;
    }
    writeVia(r, r->acc.sb, [&] {
        reinterpret_cast<XPLMSetDatab_f>(r->acc.sb)(r->acc.writeRefcon, inValue, inOffset, inLength);
    });
}

XPLMDataRef XPLMRegisterDataAccessor(const char* inDataName, XPLMDataTypeID inDataType, int inIsWritable,
                                     XPLMGetDatai_f inReadInt, XPLMSetDatai_f inWriteInt,
                                     XPLMGetDataf_f inReadFloat, XPLMSetDataf_f inWriteFloat,
                                     XPLMGetDatad_f inReadDouble, XPLMSetDatad_f inWriteDouble,
                                     XPLMGetDatavi_f inReadIntArray, XPLMSetDatavi_f inWriteIntArray,
                                     XPLMGetDatavf_f inReadFloatArray, XPLMSetDatavf_f inWriteFloatArray,
                                     XPLMGetDatab_f inReadData, XPLMSetDatab_f inWriteData,
                                     void* inReadRefcon, void* inWriteRefcon) {
    HostCore* c = core();
    if (!c || !inDataName || !*inDataName) {
        apiError("XPLMRegisterDataAccessor: empty dataref name");
        return nullptr;
    }
    int me = caller();
    DataRefRec* r = findDataRefRec(inDataName);
    if (r && !r->orphaned && !r->removed) {
        // A live name keeps its first owner; the second registration fails.
        apiError(std::string("XPLMRegisterDataAccessor: ") + inDataName + " is already registered");
        return nullptr;
    }
    if (!r) {
        c->datarefs.emplace_back();
        r = &c->datarefs.back();
        r->name = inDataName;
        c->datarefByName[r->name] = r;
        c->datarefHandles.insert(r);
    }
    // An orphaned handle is adopted by the new owner: old handles work again.
    r->types = inDataType;
    r->writable = inIsWritable != 0;
    r->owner = me;
    r->orphaned = false;
    setDataRefRemoved(*c, *r, false);
    r->values.clear();
    r->bytes.clear();
    r->onWrite = nullptr;
    auto p = [](auto f) { return reinterpret_cast<void*>(f); };
    r->acc = Accessors{p(inReadInt),        p(inWriteInt),        p(inReadFloat),    p(inWriteFloat),
                       p(inReadDouble),     p(inWriteDouble),     p(inReadIntArray), p(inWriteIntArray),
                       p(inReadFloatArray), p(inWriteFloatArray), p(inReadData),     p(inWriteData),
                       inReadRefcon,        inWriteRefcon};
    return r;
}

void XPLMUnregisterDataAccessor(XPLMDataRef inDataRef) {
    DataRefRec* r = validDataRef(inDataRef);
    if (!r || r->owner == 0) return;
    if (r->owner != caller()) {
        apiError("XPLMUnregisterDataAccessor: " + r->name + " belongs to another plug-in");
        return;
    }
    r->orphaned = true;
    r->acc = Accessors{};
}

int XPLMShareData(const char* inDataName, XPLMDataTypeID inDataType, XPLMDataChanged_f inNotificationFunc,
                  void* inNotificationRefcon) {
    HostCore* c = core();
    if (!c || !inDataName || !*inDataName) return 0;
    DataRefRec* r = findDataRefRec(inDataName);
    if (r && !r->shared) {
        // A name X-Plane or a plug-in publishes cannot be shared.
        return 0;
    }
    if (r && r->types != inDataType) return 0;
    if (!r) {
        c->datarefs.emplace_back();
        r = &c->datarefs.back();
        r->name = inDataName;
        r->types = inDataType;
        r->writable = true;
        r->owner = 0; // shared data belongs to X-Plane and outlives the plug-ins that share it
        r->shared = true;
        const bool scalar = !(inDataType & (xplmType_FloatArray | xplmType_IntArray | xplmType_Data));
        if (scalar) r->values.assign(1, 0.0);
        c->datarefByName[r->name] = r;
        c->datarefHandles.insert(r);
    }
    r->sharers.push_back(
        DataRefRec::Sharer{caller(), reinterpret_cast<void*>(inNotificationFunc), inNotificationRefcon});
    return 1;
}

int XPLMUnshareData(const char* inDataName, XPLMDataTypeID inDataType, XPLMDataChanged_f inNotificationFunc,
                    void* inNotificationRefcon) {
    DataRefRec* r = inDataName ? findDataRefRec(inDataName) : nullptr;
    if (!r || !r->shared || r->types != inDataType) return 0;
    const int me = caller();
    for (size_t i = 0; i < r->sharers.size(); ++i) {
        const DataRefRec::Sharer& s = r->sharers[i];
        if (s.plugin == me && s.notify == reinterpret_cast<void*>(inNotificationFunc) &&
            s.refcon == inNotificationRefcon) {
            r->sharers.erase(r->sharers.begin() + static_cast<long>(i));
            return 1;
        }
    }
    return 0;
}

} // extern "C"
