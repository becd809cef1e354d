'''Every example in the guides works and prints what the guide says, and the programs that read it have no complaint.'''
import fnmatch
import os
import pathlib
import subprocess
import sys
import tempfile

from frames import Case, PROGRAM, main

sys.path.append(str(pathlib.Path(__file__).parents[1] / 'support'))
from transcript import examples, pattern

DOCS = pathlib.Path(PROGRAM[0]).resolve()
PROGRAMS = pathlib.Path(PROGRAM[1]).resolve()


class Guides_Test(Case):
    def test_every_example_prints_what_the_guide_says(self):
        for guide in ('logic_analyser.md', 'ground_systems.md'):
            steps = examples((DOCS / guide).read_text(), '$ ')
            self.assertGreater(len(steps), 3, guide)
            with tempfile.TemporaryDirectory() as directory:
                (pathlib.Path(directory) / 'tests').symlink_to(DOCS.parent / 'tests')
                environment = {**os.environ, 'PATH': f'{PROGRAMS}:{os.environ["PATH"]}', 'HOME': directory,
                               'TMPDIR': directory}
                for _, command, expected in steps:
                    ran = subprocess.run(['bash', '-c', command], cwd=directory, env=environment, text=True,
                                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                    with self.subTest(f'{guide}: {command}'):
                        self.assertEqual(ran.returncode, 0, ran.stdout)
                        self.assertTrue(fnmatch.fnmatchcase(ran.stdout, pattern(expected)), ran.stdout)


main()
