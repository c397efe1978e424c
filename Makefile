# Kalvora: the two commands of the README, and a few more for developers.
#   make demo   build the plug-in and simhost, run the push-back demo, write report/
#   make test   build everything and run the whole test suite
#   make release  dist/Kalvora-<version>.zip: the plug-in for Linux, Windows and macOS
SHELL := /bin/bash
BUILD ?= build
FUZZ_BUILD ?= build-fuzz
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 10
CMAKE_FLAGS ?=
PREFIX ?= /usr/local

.PHONY: all deps configure toolchains cross build demo test release fuzz bench install clean

all: build

deps:
	@bash scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -G Ninja -DKALVORA_TESTS=ON -DKALVORA_BENCH=ON -DKALVORA_CROSS=ON $(CMAKE_FLAGS) >/dev/null

# What the other platforms' builds fetch (zig, Debian's libpng/zlib sources), cached in the build folder.
toolchains: configure
	@bash scripts/toolchains.sh $(BUILD)/toolchains
	@cmake -S . -B $(BUILD) >/dev/null

# The plug-in for the other platforms (and simhost for Windows), each in $(BUILD)/cross/.
cross: toolchains
	@cmake --build $(BUILD) -j $(JOBS) --target cross

build: configure cross
	@cmake --build $(BUILD) -j $(JOBS)

# The release: dist/Kalvora-<version>.zip, the plug-in folder for every platform.
release: cross
	@cmake --build $(BUILD) -j $(JOBS) --target Kalvora.xpl
	@bash scripts/make-release.sh $(BUILD) dist

# Configured like `make test` (so the two share one build folder) but builds only what the demo runs.
demo: configure
	@cmake --build $(BUILD) -j $(JOBS) --target Kalvora.xpl kalvora-sim
	@bash scripts/run-demo.sh $(BUILD)

# Unit, scenario and binary tests (gcc build), then the bounded fuzz runs (clang build).
test: build
	@FUZZ_SECONDS=$(FUZZ_SECONDS) JOBS=$(JOBS) bash scripts/run-tests.sh $(BUILD) $(FUZZ_BUILD)

# Longer fuzz runs: make fuzz FUZZ_SECONDS=600
fuzz: deps
	@CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -G Ninja -DKALVORA_FUZZ=ON -DKALVORA_TESTS=OFF \
	    -DKALVORA_BENCH=OFF -DKALVORA_FUZZ_SECONDS=$(FUZZ_SECONDS) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(FUZZ_BUILD) -j $(JOBS) --target fuzzers
	@ctest --test-dir $(FUZZ_BUILD) --output-on-failure -L fuzz -j $(JOBS) --no-tests=ignore

# Every benchmark program, then the figures: times, allocations, and callgrind's instruction counts.
bench: configure
	@cmake --build $(BUILD) -j $(JOBS)
	@bash scripts/run-bench.sh $(BUILD)

# make install XPLANE="/path/to/X-Plane 12" puts the plug-in into X-Plane; every make install puts
# kalvora-sim (with libsimhost, the aircraft profiles and Kalvora) into PREFIX.
install: build
	@if [ -n "$(XPLANE)" ]; then cmake --install $(BUILD) --prefix "$(XPLANE)"; fi
	@cmake --install $(BUILD) --component simhost --prefix "$(PREFIX)"

clean:
	@rm -rf $(BUILD) $(FUZZ_BUILD) dist
