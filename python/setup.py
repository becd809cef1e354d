"""Builds a wheel, or installs: pip wheel --no-build-isolation --no-deps python/

CMake does the work; setuptools puts what it installs where Python looks. VELM_PYTHON_BUILD names a build directory to use
again. The wheel has the libraries of the host platform's stand-in beside the extension module; those of Debian that they
need, libiniparser1 and libtomlplusplus3, have to be there.
"""
import os
import re
import shutil
import subprocess
import sys
import sysconfig
from pathlib import Path

from setuptools import Distribution, setup
from setuptools.command.build_ext import build_ext
from setuptools.extension import Extension

SOURCES = Path(__file__).resolve().parents[1]
MADE = SOURCES / "build/wheel-made"  # what setuptools makes on the way
MADE.mkdir(parents=True, exist_ok=True)
VERSION = re.search(r"project\(velm_zavra VERSION ([\d.]+)", (SOURCES / "CMakeLists.txt").read_text())[1]


class Build(build_ext):
    def run(self):
        build = Path(os.environ.get("VELM_PYTHON_BUILD") or Path(self.build_temp) / "cmake").resolve()
        stage = build / "wheel"
        shutil.rmtree(stage, ignore_errors=True)
        cmake = ["cmake", "-S", SOURCES, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DVELM_BUILD_TESTS=OFF",
                 "-DVELM_BUILD_PYTHON=ON", "-DVELM_WARNINGS_ARE_ERRORS=OFF", f"-DCMAKE_INSTALL_PREFIX={stage}",
                 "-DCMAKE_INSTALL_LIBDIR=lib", "-DVELM_PYTHON_INSTALL_DIR=.", f"-DPython_EXECUTABLE={sys.executable}",
                 f"-DVELM_PYTHON_INCLUDE_DIR={sysconfig.get_path('include')}"]
        subprocess.check_call(cmake)
        subprocess.check_call(["cmake", "--build", build, "--target", "python_package", "velm_api_ext", "velm_zavra_api",
                               "--parallel", os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", "2")])
        for component in "python", "library":
            subprocess.check_call(["cmake", "--install", build, "--component", component, "--strip"])
        package = Path(self.build_lib) / "velm_zavra"
        shutil.copytree(stage / "velm_zavra", package, dirs_exist_ok=True)
        for library in (stage / "lib").glob("libvelm_api_*.so"):
            shutil.copy(library, package)


class Binary(Distribution):
    def has_ext_modules(self):
        return True


setup(name="velm-zavra", version=VERSION, description="The ZAVRA-100 attitude unit: its driver, a simulated unit, its protocol",
      license="Apache-2.0", python_requires=">=3.11", extras_require={"plot": ["matplotlib"], "record": ["numpy", "pandas"]},
      packages=[], ext_modules=[Extension("velm_zavra._core", [])], distclass=Binary, cmdclass={"build_ext": Build},
      options={"egg_info": {"egg_base": str(MADE)}, "build": {"build_base": str(MADE)}})
