"""Builds the compiled part and the bundled model with CMake; all else stands in pyproject.toml.

VELTO_BUILD_DIR names a CMake build folder with VELTO_BUILD_PYTHON=ON to build in; by default one is
configured from the checkout that this folder is part of.
"""

import os
import pathlib
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent.parent


class CMakeBuild(build_ext):
    def build_extension(self, ext):
        build = os.environ.get("VELTO_BUILD_DIR") or self.configured()
        prefix = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent.parent
        subprocess.run(["cmake", "--build", build, "--target", "velto_python"], check=True)
        install = ["cmake", "--install", build, "--component", "python", "--prefix", str(prefix)]
        subprocess.run(install, check=True)

    def configured(self):
        build = os.path.abspath(self.build_temp)
        options = {
            "VELTO_BUILD_PYTHON": "ON",
            "VELTO_BUILD_TESTS": "OFF",
            "VELTO_BUILD_WORKBENCH": "OFF",
            "Python3_EXECUTABLE": sys.executable,
        }
        arguments = [f"-D{name}={value}" for name, value in options.items()]
        subprocess.run(["cmake", "-S", str(ROOT), "-B", build, *arguments], check=True)
        return build


setup(ext_modules=[Extension("velto._velto", sources=[])], cmdclass={"build_ext": CMakeBuild})
