'''Every example in the guides works and prints what the guide says, and the programs that read it have no complaint.'''
import fnmatch
import os
import pathlib
import subprocess
import tempfile

from frames import Case, PROGRAM, main

DOCS = pathlib.Path(PROGRAM[0]).resolve()
PROGRAMS = pathlib.Path(PROGRAM[1]).resolve()


def examples(text):
    '''Indented lines: "$ command", then what it prints, where "..." stands for anything.'''
    found = []
    in_example = False
    for line in text.splitlines():
        if line.startswith('    $ '):
            found.append([line[6:], ''])
            in_example = True
        elif in_example and line.startswith('    '):
            found[-1][1] += line[4:] + '\n'
        else:
            in_example = False
    return found


def pattern(text):
    return ''.join(f'[{c}]' if c in '[?*' else c for c in text).replace('...', '*')


class Guides_Test(Case):
    def test_every_example_prints_what_the_guide_says(self):
        for guide in ('logic_analyser.md', 'ground_systems.md'):
            steps = examples((DOCS / guide).read_text())
            self.assertGreater(len(steps), 3, guide)
            with tempfile.TemporaryDirectory() as directory:
                (pathlib.Path(directory) / 'tests').symlink_to(DOCS.parent / 'tests')
                environment = {**os.environ, 'PATH': f'{PROGRAMS}:{os.environ["PATH"]}', 'HOME': directory,
                               'TMPDIR': directory}
                for command, expected in steps:
                    ran = subprocess.run(['bash', '-c', command], cwd=directory, env=environment, text=True,
                                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                    with self.subTest(f'{guide}: {command}'):
                        self.assertEqual(ran.returncode, 0, ran.stdout)
                        self.assertTrue(fnmatch.fnmatchcase(ran.stdout, pattern(expected)), ran.stdout)


main()
