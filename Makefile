# Two commands for a fresh Debian 12 machine: `make run` and `make test`.
BUILD_DIR ?= build
ASAN_DIR ?= build-asan
CMAKE_FLAGS ?=

.PHONY: all deps build run test test-asan bench soak format clean

all: build

deps:
	@./scripts/install-deps.sh

$(BUILD_DIR)/build.ninja:
	cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

build: deps $(BUILD_DIR)/build.ninja
	cmake --build $(BUILD_DIR)

run: build
	./$(BUILD_DIR)/obrinta

test: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure --timeout 300
	$(MAKE) test-asan

# The same suite again under AddressSanitizer and UndefinedBehaviorSanitizer.
test-asan: deps
	cmake -S . -B $(ASAN_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DOBRINTA_DEBUG_LOG=OFF -DOBRINTA_SANITIZE=ON
	cmake --build $(ASAN_DIR)
	ctest --test-dir $(ASAN_DIR) --output-on-failure --timeout 600 -LE nosanitize

bench: build
	./bench/run-all.sh $(BUILD_DIR)

soak: build
	OBRINTA_BIN_DIR=$(BUILD_DIR) umockdev-wrapper /usr/bin/python3 tests/integration/soak.py 600
	OBRINTA_CRASH_ROUNDS=1000 ./$(BUILD_DIR)/test_persistence_crash

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD_DIR) $(ASAN_DIR)
