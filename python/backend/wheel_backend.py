"""Builds the package with Python alone, in an empty environment and without a network too: pip asks
this module (PEP 517)."""
import base64
import hashlib
import io
import os
import re
import tarfile
import time
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
NAME = "zortunedex"
_FIRST_DAY = 315532800  # of the years that a zip file knows


def _read(name):
    return (ROOT / name).read_text(encoding="utf-8")


def _found(pattern, text):
    match = re.search(pattern, text, re.M | re.S)
    if match is None:
        raise RuntimeError(f"nothing fits {pattern}")
    return match.group(1)


def _version():
    return _found(r'^VERSION = "([^"]+)"', _read(f"{NAME}/_generated.py"))


def _metadata():
    project = _read("pyproject.toml")
    lines = ["Metadata-Version: 2.1", f"Name: {NAME}", f"Version: {_version()}",
             "Summary: " + _found(r'^description = "(.*?)"$', project),
             "Requires-Python: " + _found(r'^requires-python = "(.*?)"$', project)]
    classifiers = re.findall(r'"(.*?)"', _found(r"^classifiers = \[(.*?)^\]", project))
    lines += [f"Classifier: {classifier}" for classifier in classifiers]
    return "\n".join([*lines, "Description-Content-Type: text/markdown", "", _read("README.md")])


def _sources():
    return {f"{NAME}/{path.name}": path.read_bytes()
            for path in sorted((ROOT / NAME).iterdir()) if path.suffix == ".py" or
            path.name == "py.typed"}


def _date():
    return max(int(os.environ.get("SOURCE_DATE_EPOCH", time.time())), _FIRST_DAY)


def _write_wheel(folder, files):
    """The files, what they are, and the record of all of them."""
    info = f"{NAME}-{_version()}.dist-info"
    files = {name: data for name, data in files.items()}
    files[f"{info}/METADATA"] = _metadata().encode("utf-8")
    files[f"{info}/WHEEL"] = (b"Wheel-Version: 1.0\nGenerator: " + NAME.encode() +
                              b"\nRoot-Is-Purelib: true\nTag: py3-none-any\n")
    record = "".join(f"{name},sha256={_digest(data)},{len(data)}\n"
                     for name, data in files.items())
    files[f"{info}/RECORD"] = f"{record}{info}/RECORD,,\n".encode()
    wheel = f"{NAME}-{_version()}-py3-none-any.whl"
    with zipfile.ZipFile(Path(folder) / wheel, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in files.items():
            entry = zipfile.ZipInfo(name, time.gmtime(_date())[:6])
            entry.external_attr = 0o100644 << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, data)
    return wheel


def _digest(data):
    return base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    return _write_wheel(wheel_directory, _sources())


def build_editable(wheel_directory, config_settings=None, metadata_directory=None):
    """Leads to the sources where they are."""
    return _write_wheel(wheel_directory, {f"{NAME}.pth": f"{ROOT}\n".encode("utf-8")})


def build_sdist(sdist_directory, config_settings=None):
    base = f"{NAME}-{_version()}"
    files = _sources()
    for name in ("pyproject.toml", "README.md", "backend/wheel_backend.py"):
        files[name] = (ROOT / name).read_bytes()
    files["PKG-INFO"] = _metadata().encode("utf-8")
    with tarfile.open(Path(sdist_directory) / f"{base}.tar.gz", "w:gz") as archive:
        for name, data in files.items():
            entry = tarfile.TarInfo(f"{base}/{name}")
            entry.size, entry.mtime, entry.mode = len(data), _date(), 0o644
            archive.addfile(entry, io.BytesIO(data))
    return f"{base}.tar.gz"
