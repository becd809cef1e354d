'''A real browser without a window, and what it complains about.'''
import pathlib
import subprocess
import sys
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
SCREENSHOTS = pathlib.Path(sys.argv[2])
EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / 'examples'


def run(*words):
    '''What the program writes to standard output.'''
    return subprocess.run([str(word) for word in words], check=True, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout


def main():
    unittest.main(argv=sys.argv[:1])


class Browser_Case(unittest.TestCase):

    @classmethod
    def setUpClass(cls):
        options = webdriver.ChromeOptions()
        for option in ('--headless=new', '--no-sandbox', '--disable-dev-shm-usage', '--window-size=1500,1100', '--hide-scrollbars',
                       '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--force-device-scale-factor=1'):
            options.add_argument(option)
        options.set_capability('goog:loggingPrefs', {'browser': 'ALL'})
        cls.browser = webdriver.Chrome(service=Service('/usr/bin/chromedriver'), options=options)
        cls.browser.set_script_timeout(60)
        SCREENSHOTS.mkdir(parents=True, exist_ok=True)

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def open(self, address):
        self.browser.get(address)

    def js(self, expression):
        return self.browser.execute_script(f'return {expression}')

    def screenshot(self, name):
        self.browser.save_screenshot(str(SCREENSHOTS / f'{name}.png'))

    def assert_no_complaints(self):
        self.assertEqual([entry['message'] for entry in self.browser.get_log('browser')], [])
