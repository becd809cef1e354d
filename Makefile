# The front door: every target sets up what it needs on a Debian machine.
.PHONY: help demo test test-arm test-clang tidy protocol-reference benchmark size package abi abi-record clean

help:
	@echo "make demo       build, start a simulated unit and show an application talking to it"
	@echo "make test       build and run all tests, plain and with the sanitizers"
	@echo "make test-arm   the tests built for 32-bit ARM and run under emulation"
	@echo "make test-clang the tests built with Clang"
	@echo "make tidy       clang-tidy over the library, the platform and the programs"
	@echo "make protocol-reference  rewrite docs/protocol.md from the command descriptors"
	@echo "make benchmark  CPU cost of commands, codec and CRC"
	@echo "make size       the flight build: its checks, and how large its library is"
	@echo "make package    Debian packages for this machine and for 32-bit ARM, in build/packages"
	@echo "make abi        compares the library's binary interface on ARM with the one recorded"
	@echo "make abi-record records it, when a change is wanted"
	@echo "make clean      remove the build trees"

demo:
	@scripts/setup.sh base
	@cmake --preset dev --log-level=WARNING
	@cmake --build --preset dev --target zavra-sim examples -- --quiet
	@examples/demo.sh build/dev/bin

test:
	@scripts/setup.sh base
	@scripts/test.sh dev sanitize

test-arm:
	@scripts/setup.sh base arm
	@scripts/test.sh arm

test-clang:
	@scripts/setup.sh base clang
	@scripts/test.sh clang

tidy:
	@scripts/setup.sh base clang
	@cmake --preset clang --log-level=WARNING
	@run-clang-tidy -quiet -p build/clang '/(device|api|platform|simulator|tools|examples)/.*\.cpp$$'

protocol-reference:
	@scripts/setup.sh base
	@cmake --preset dev --log-level=WARNING
	@cmake --build --preset dev --target protocol_reference -- --quiet
	@build/dev/bin/protocol_reference >build/protocol.md
	@mv build/protocol.md docs/protocol.md

benchmark:
	@scripts/setup.sh base benchmark
	@cmake --preset release --log-level=WARNING
	@cmake --build --preset release --target zavra_benchmark -- --quiet
	@build/release/bin/zavra_benchmark

size:
	@scripts/setup.sh base arm
	@cmake --preset flight --log-level=WARNING
	@cmake --build --preset flight -- --quiet
	@scripts/size.sh build/flight

package:
	@scripts/setup.sh base arm package
	@scripts/package.sh

abi abi-record:
	@scripts/setup.sh base arm abi
	@scripts/abi.sh $@

clean:
	rm -rf build
