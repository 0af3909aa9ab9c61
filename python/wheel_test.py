"""The package as pip installs it into a clean virtual environment."""

import importlib.util
import os
import pathlib
import shutil
import subprocess
import sys

import pytest

HERE = pathlib.Path(__file__).resolve().parent
USE = """
import velto
found = velto.Model().predict("ACGT" * 5)
assert found.status == "short", found
assert velto.__file__.startswith({prefix!r}), velto.__file__
import importlib.metadata
print(importlib.metadata.version("velto"))
"""


def run(*command, **options):
    """Runs without the package of the build folder in reach; gives what was printed."""
    environment = {k: v for k, v in os.environ.items() if k != "PYTHONPATH"}
    done = subprocess.run(
        [str(word) for word in command],
        env=environment,
        capture_output=True,
        text=True,
        **options,
    )
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


@pytest.fixture(scope="module")
def wheel(tmp_path_factory):
    for needed in ("pip", "setuptools", "wheel", "venv"):
        if importlib.util.find_spec(needed) is None:
            pytest.skip(f"this Python has no {needed}")
    folder = tmp_path_factory.mktemp("wheel")
    source = shutil.copytree(HERE, folder / "python")
    pip = (sys.executable, "-m", "pip", "wheel", "--no-index", "--no-deps")
    run(*pip, "--no-build-isolation", "--wheel-dir", folder, source)
    (built,) = folder.glob("*.whl")
    return built


def test_a_clean_environment_imports_and_uses_the_installed_wheel(wheel, tmp_path):
    run(sys.executable, "-m", "venv", tmp_path / "clean")
    python = tmp_path / "clean" / "bin" / "python"
    run(python, "-m", "pip", "install", "--no-index", "--no-deps", wheel)
    script = USE.format(prefix=str(tmp_path))
    version = run(python, "-c", script, cwd=tmp_path).strip()
    program = run(os.environ["VELTO_PROGRAM"], "--version")
    assert program.startswith(f"velto {version},")


def test_the_wheel_carries_model_and_types(wheel, tmp_path):
    shutil.unpack_archive(wheel, tmp_path, "zip")
    package = tmp_path / "velto"
    assert (package / "py.typed").exists()
    assert (package / "_velto.pyi").exists()
    for model in ("human", "zebrafish"):
        assert (package / "models" / model / "model.json").exists()
