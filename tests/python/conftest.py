import os
from pathlib import Path

import pytest
from velm_zavra.simulator import Bench

SOURCES = Path(__file__).parents[2]
BUILD = Path(os.environ["VELM_BUILD"])
SATELLITE = SOURCES / "examples/satellites/3u.toml"


@pytest.fixture
def bench():
    with Bench() as bench:
        yield bench


@pytest.fixture
def unit(bench):
    with bench.connect() as unit:
        yield unit
