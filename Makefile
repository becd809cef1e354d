# The front door: every target sets up what it needs on a Debian machine.
.PHONY: help python $(MAKECMDGOALS)

# Whatever the caller's environment is: a locale that every machine has, and a shell without surprises.
export LC_ALL := C.UTF-8
unexport LANGUAGE BASH_ENV CDPATH DESTDIR

help:
	@echo "make demo       build, start a simulated unit and show an application talking to it"
	@echo "make test       build and run all tests"
	@echo "make test-sanitize  the same with AddressSanitizer and UndefinedBehaviorSanitizer"
	@echo "make test-arm   the tests built for 32-bit ARM and run under emulation"
	@echo "make test-clang the tests built with Clang"
	@echo "make python     the Python package, in build/dev/python"
	@echo "make test-python  its tests: pytest, mypy, the example and the notebook"
	@echo "make wheel      the Python package as a wheel, in build/wheels, installed and tried"
	@echo "make test-ground  the exports against sigrok, an XML validator and Prometheus' own checks"
	@echo "make test-kaitai  the Kaitai Struct export against its compiler, which comes from the npm registry"
	@echo "make rehearsal  the flight build on Debian's ARM kernel in a virtual machine, with the unit on its I2C bus"
	@echo "make test-view  the pages in a browser (Chromium); screenshots in build/view"
	@echo "make campaign  200 detumblings of a 3U on all cores, in build/campaign"
	@echo "make tidy       clang-tidy over the library, the platform and the programs"
	@echo "make docs       the API reference, in build/docs/html, and a check of the manual pages"
	@echo "make protocol-reference  rewrite docs/protocol.md from the command descriptors"
	@echo "make benchmark  CPU cost of commands, codec, CRC, satellite and magnetic field"
	@echo "make mission-table  how well the simulated unit's own software determines and controls, with twenty seeds"
	@echo "make size       the flight build: its checks, and how large its library is"
	@echo "make package    Debian packages for this machine and for 32-bit ARM, in build/packages"
	@echo "make abi        compares the library's binary interface on ARM with the one recorded"
	@echo "make abi-record records it, when a change is wanted"
	@echo "make clean      remove the build trees"

demo:
	@echo "You will see a simulated ZAVRA-100 start, and applications and the bench tool talk to it, for half a minute."
	@echo "Before that the programs are built, which takes minutes the first time."
	@scripts/setup.sh base
	@scripts/build.sh dev zavra-sim zavractl examples
	@examples/demo.sh build/dev/bin

test:
	@scripts/setup.sh base
	@scripts/test.sh dev

test-sanitize:
	@scripts/setup.sh base
	@scripts/test.sh sanitize

test-arm:
	@scripts/setup.sh base arm
	@scripts/test.sh arm

test-clang:
	@scripts/setup.sh base clang
	@scripts/test.sh clang

python:
	@scripts/setup.sh base python
	@cmake --preset dev -DVELM_BUILD_PYTHON=ON --log-level=WARNING
	@cmake --build --preset dev --target python_package -- --quiet
	@echo "PYTHONPATH=$$PWD/build/dev/python finds velm_zavra; the interpreter is /usr/bin/python3"

test-python: python
	@scripts/setup.sh python-tests
	@cmake --build --preset dev --target zavra-sim -- --quiet
	@ctest --preset dev --build-config python --label-regex python

wheel:
	@scripts/setup.sh base python python-tests wheel
	@scripts/wheel.sh

test-ground:
	@scripts/setup.sh base ground
	@cmake --preset dev --log-level=WARNING
	@cmake --build --preset dev --target zavractl zavra-sim -- --quiet
	@ctest --preset dev --build-config ground --label-regex ground

test-kaitai:
	@scripts/setup.sh base kaitai
	@cmake --preset dev --log-level=WARNING
	@cmake --build --preset dev --target zavractl -- --quiet
	@npm install --silent --no-save --prefix build/kaitai kaitai-struct-compiler@0.10.0
	@/usr/bin/python3 tests/ground/kaitai_test.py "$$PWD/build/kaitai/node_modules/kaitai-struct-compiler" build/dev/bin/zavractl

rehearsal:
	@scripts/setup.sh base arm rehearsal
	@cmake --preset dev -DVELM_USB_ADAPTER=ON --log-level=WARNING >/dev/null
	@cmake --build --preset dev --target zavra-sim zavractl -- --quiet
	@scripts/build.sh rehearsal
	@scripts/rehearsal_image.sh
	@/usr/bin/python3 tests/rehearsal/rehearsal_test.py build/dev/bin
test-view:
	@scripts/setup.sh base view
	@cmake --preset dev -DVELM_BUILD_VIEW=ON --log-level=WARNING >/dev/null
	@scripts/build.sh dev zavra-sim zavractl
	@for pages in report campaign live; do \
		/usr/bin/python3 tests/view/$${pages}_test.py build/dev/bin build/view || exit 1; \
	done

campaign:
	@scripts/setup.sh base benchmark campaign
	@scripts/build.sh release zavra-sim zavractl
	@scripts/campaign.sh build/release/bin/zavra-sim build/campaign 1 200 --satellite examples/satellites/3u.toml \
		--scenario examples/flights/detumbling.toml --vary examples/campaigns/detumbling_3u.toml --run 3h
	@build/release/bin/zavractl campaign build/campaign/results.jsonl -o build/campaign/campaign.html

tidy:
	@scripts/setup.sh base clang
	@cmake --preset clang --log-level=WARNING >/dev/null
	@run-clang-tidy -quiet -p build/clang '/(device|api|platform|catalogue|simulator|tools|examples)/.*\.cpp$$'

docs:
	@scripts/setup.sh docs
	@mkdir -p build
	@doxygen docs/Doxyfile
	@complaints=$$(groff -man -ww -z -Tutf8 simulator/zavra-sim.1 tools/zavractl.1 2>&1); \
	test -z "$$complaints" || { echo "$$complaints" >&2; exit 1; }

protocol-reference:
	@scripts/setup.sh base
	@scripts/build.sh dev protocol_reference
	@build/dev/bin/protocol_reference >build/protocol.md
	@mv build/protocol.md docs/protocol.md

benchmark:
	@scripts/setup.sh base benchmark
	@scripts/build.sh release zavra_benchmark
	@build/release/bin/zavra_benchmark

mission-table:
	@scripts/setup.sh base benchmark
	@scripts/build.sh release mission_table
	@build/release/bin/mission_table

size:
	@scripts/setup.sh base arm
	@scripts/build.sh flight
	@scripts/size.sh build/flight

package:
	@scripts/setup.sh base arm package python
	@scripts/package.sh

abi abi-record:
	@scripts/setup.sh base arm abi
	@scripts/abi.sh $@

clean:
	rm -rf build
