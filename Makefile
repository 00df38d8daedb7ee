# Front door of the build: every target installs what is missing, configures,
# builds and runs. The CMake presets do the rest.
JOBS ?= $(shell nproc)

.PHONY: check demo asan tsan fuzz deps build bench clean

deps:
	./scripts/install-deps.sh

build: deps
	cmake --preset default
	cmake --build --preset default -j $(JOBS)

check: build
	ctest --preset default -j $(JOBS)

# A short clip with sound, made by the fixture generator, then probed, laid out as a
# contact sheet and its sound written as a WAV file.
DEMO_DIR := build/default/demo
demo: build
	./build/default/tests/fixtures/generate_fixtures $(DEMO_DIR) movie_aac.mp4
	./build/default/tools/tessel/tessel demo $(DEMO_DIR)/movie_aac.mp4 -o $(DEMO_DIR)

asan: deps
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	ctest --preset asan -j $(JOBS)

tsan: deps
	cmake --preset tsan
	cmake --build --preset tsan -j $(JOBS)
	ctest --preset tsan -j $(JOBS)

# The libFuzzer targets, built by clang with ASan and UBSan in build/fuzz; run them with
# fuzz/run.sh (fuzz/README.md).
fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)

bench: build
	./bench/run.sh build/default

clean:
	rm -rf build
