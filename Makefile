# The two set-up commands of a fresh machine:
#   make run    builds everything and starts the qvt script host
#   make test   builds everything and runs all tests
BUILD ?= build
JOBS ?= 2

.PHONY: all deps configure build run test bench sanitize clean

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null

build: configure
	@cmake --build $(BUILD) -j$(JOBS)

run: build
	@$(BUILD)/qvt

test: build
	@cd $(BUILD) && ctest --output-on-failure

bench: build
	@$(BUILD)/qvt_bench

# Unit tests under AddressSanitizer and UndefinedBehaviorSanitizer.
sanitize: deps
	@cmake -S . -B $(BUILD)-asan -DCMAKE_BUILD_TYPE=Debug -DQVT_SANITIZE=ON -DQVT_BENCH=OFF >/dev/null
	@cmake --build $(BUILD)-asan -j$(JOBS)
	@cd $(BUILD)-asan && ctest --output-on-failure

clean:
	rm -rf $(BUILD) $(BUILD)-asan
