"""The guide, the example and the notebook do what they say."""
import json
import os
import re
import subprocess
import sys

from conftest import SOURCES


def test_the_guide(monkeypatch):
    monkeypatch.chdir(SOURCES)
    monkeypatch.setenv("MPLBACKEND", "agg")
    blocks = re.findall(r"^```python\n(.*?)^```$", (SOURCES / "docs/python.md").read_text(), re.M | re.S)
    assert len(blocks) >= 5
    names = {}
    for block in blocks:
        exec(compile(block, "docs/python.md", "exec"), names)
    names["test_a_tumble_is_waited_for"](monkeypatch)


def test_the_example_catches_the_tumble(tmp_path):
    script, satellite, report = SOURCES / "examples/python/catch_tumble.py", SOURCES / "examples/satellites/1u.toml", tmp_path / "r.png"
    said = subprocess.check_output([sys.executable, script, satellite, report], text=True, env={**os.environ, "MPLBACKEND": "agg"})
    before, after = map(float, re.findall(r"([\d.]+) deg/s", said))
    assert after < before / 4
    assert report.read_bytes().startswith(b"\x89PNG")


def test_the_notebook(tmp_path):
    notebook = SOURCES / "examples/python/first_orbits.ipynb"
    assert not any(cell.get("outputs") for cell in json.loads(notebook.read_text())["cells"])
    subprocess.check_call([sys.executable, "-m", "nbconvert", "--to", "notebook", "--execute", "--output-dir", tmp_path, notebook],
                          cwd=SOURCES, env={**os.environ, "HOME": str(tmp_path)})
    cells = json.loads((tmp_path / notebook.name).read_text())["cells"]
    assert sum("image/png" in output.get("data", {}) for cell in cells for output in cell.get("outputs", [])) == 2
