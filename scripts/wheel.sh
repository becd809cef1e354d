#!/usr/bin/env bash
# Builds the Python package as a wheel into build/wheels, installs it into an empty directory and tries it there.
set -euo pipefail
cd "$(dirname "$0")/.."

python=/usr/bin/python3
export VELM_PYTHON_BUILD=${VELM_PYTHON_BUILD:-$PWD/build/wheel}
rm -rf build/wheels build/wheel-tried
$python -m pip --disable-pip-version-check wheel --quiet --no-index --no-build-isolation --no-deps --wheel-dir build/wheels ./python
wheel=(build/wheels/velm_zavra-*.whl)
$python -m pip --disable-pip-version-check --no-cache-dir install --quiet --root-user-action ignore --no-index --no-deps --target build/wheel-tried "${wheel[0]}"
cd build/wheel-tried # so that nothing else is found
PYTHONPATH=$PWD VELM_BUILD=none $python -m pytest -q -p no:cacheprovider ../../tests/python/{records,protocol,failures}_test.py \
    -k 'not interrupt and not other_threads'
ls -l ../wheels
