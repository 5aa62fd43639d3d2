"""Builds the wheel and the source archive of kdx: pip finds this by pyproject.toml (PEP 517)."""

import io
import pathlib
import re
import shutil
import subprocess
import sys
import sysconfig
import tarfile
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ["CMakeLists.txt", "pyproject.toml", "README.md", "CHANGELOG.md", "SECURITY.md"]
SOURCES += ["LICENSE", "cmake", "include", "src", "python"]
PROJECT = re.search(r"^project\(\w+ VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text(), re.M)
VERSION = PROJECT[1]
METADATA = f"""Metadata-Version: 2.1
Name: kdx
Version: {VERSION}
Summary: Reads and writes KDX, a line-oriented language of nested objects
License: MIT
Requires-Python: >=3.9
"""


def _cmake(*arguments):
    subprocess.run(["cmake", *map(str, arguments)], check=True)


def _install(build, files):
    """Puts the package and the library into `files`."""
    options = ["CMAKE_BUILD_TYPE=Release", "KIV_BUILD_TOOL=OFF", "KIV_BUILD_PYTHON=ON"]
    options.append(f"Python_EXECUTABLE={sys.executable}")
    generator = ["-G", "Ninja"] if shutil.which("ninja") else []
    _cmake("-S", ROOT, "-B", build, *generator, *[f"-D{option}" for option in options])
    _cmake("--build", build, "--parallel", 2)
    _cmake("--install", build, "--component", "python", "--prefix", files, "--strip")


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    from wheel.wheelfile import WheelFile

    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    tag = f"{python}-{python}-{re.sub('[-.]', '_', sysconfig.get_platform())}"
    name = f"kdx-{VERSION}-{tag}.whl"
    with tempfile.TemporaryDirectory() as build, tempfile.TemporaryDirectory() as files:
        _install(build, files)
        info = pathlib.Path(files, f"kdx-{VERSION}.dist-info")
        info.mkdir()
        (info / "METADATA").write_text(METADATA)
        (info / "WHEEL").write_text(f"Wheel-Version: 1.0\nRoot-Is-Purelib: false\nTag: {tag}\n")
        (info / "LICENSE").write_bytes((ROOT / "LICENSE").read_bytes())
        with WheelFile(pathlib.Path(wheel_directory, name), "w") as wheel:
            wheel.write_files(files)
    return name


def build_sdist(sdist_directory, config_settings=None):
    name = f"kdx-{VERSION}"
    with tarfile.open(pathlib.Path(sdist_directory, name + ".tar.gz"), "w:gz") as archive:
        for source in SOURCES:
            archive.add(ROOT / source, f"{name}/{source}", filter=_without_caches)
        about = tarfile.TarInfo(f"{name}/PKG-INFO")
        about.size = len(METADATA)
        archive.addfile(about, io.BytesIO(METADATA.encode()))
    return name + ".tar.gz"


def _without_caches(member):
    return None if member.name.endswith("__pycache__") else member
