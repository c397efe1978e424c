#!/usr/bin/env bash
# Checks the built Kalvora.xpl the way X-Plane will load it:
#  - it exports exactly the five plug-in entry points;
#  - every symbol it leaves undefined is X-Plane API, the C library (libc, libm,
#    libdl, libpthread) or OpenGL, all of which the host process provides;
#  - it needs no C++ runtime, libpng or zlib at run time (they are linked in);
#  - it links no function that some supported hosts lack;
#  - it has no STB_GNU_UNIQUE symbols, which would stop dlclose() unloading it.
set -u
xpl=${1:?usage: check_plugin_binary.sh Kalvora.xpl}
fail=0
say() { echo "check_plugin_binary: $*"; }

defined=$(nm -D --defined-only "$xpl" | awk '{print $3}' | sort)
expected=$(printf '%s\n' XPluginDisable XPluginEnable XPluginReceiveMessage XPluginStart XPluginStop | sort)
if [ "$defined" != "$expected" ]; then
    say "exported symbols differ from the five entry points:"; echo "$defined"; fail=1
fi

# glibc symbols carry a version (@GLIBC_...); X-Plane's and OpenGL's do not. Weak
# references ("w") may stay unresolved without failing the load, so only "U" counts.
bad_undefined=$(nm -D --undefined-only "$xpl" | awk '$1 == "U" {print $2}' \
    | grep -v -E '@GLIBC_' \
    | grep -v -E '^(XPLM|XP)[A-Za-z0-9_]+$' \
    | grep -v -E '^gl[A-Z][A-Za-z0-9]*$' \
    | grep -v -E '^(__gmon_start__|_ITM_deregisterTMCloneTable|_ITM_registerTMCloneTable|__cxa_finalize)$' || true)
if [ -n "$bad_undefined" ]; then
    say "undefined symbols the host does not provide:"; echo "$bad_undefined"; fail=1
fi

# Functions some supported hosts lack (the instancing API came with X-Plane 11.10,
# the legacy buttons are gone from newer ones) are looked up at run time: linked
# directly, they would stop the plug-in loading on those hosts.
late=$(nm -D --undefined-only "$xpl" | awk '{print $2}' | grep -E \
    '^(XPLMLoadObject|XPLMUnloadObject|XPLMCreateInstance|XPLMDestroyInstance|XPLMInstanceSetPosition|XPLMCommandButtonPress|XPLMCommandButtonRelease)$' || true)
if [ -n "$late" ]; then
    say "links functions that some hosts lack (look them up with XPLMFindSymbol):"; echo "$late"; fail=1
fi

needed=$(readelf -d "$xpl" | awk '/NEEDED/ {gsub(/[\[\]]/, "", $5); print $5}')
bad_needed=$(echo "$needed" | grep -E 'libstdc\+\+|libgcc_s|libpng|libz\.' || true)
if [ -n "$bad_needed" ]; then
    say "needs libraries that must be linked in:"; echo "$bad_needed"; fail=1
fi
other_needed=$(echo "$needed" | grep -v -E '^(libc|libm|libdl|libpthread)\.so|^ld-linux|^$' || true)
if [ -n "$other_needed" ]; then
    say "needs libraries outside the C library:"; echo "$other_needed"; fail=1
fi

if readelf --dyn-syms -W "$xpl" | grep -q UNIQUE; then
    say "has STB_GNU_UNIQUE symbols (dlclose would not unload it)"; fail=1
fi

[ $fail -eq 0 ] && say "ok: 5 entry points exported; needs: $(echo $needed)"
exit $fail
