'''A real browser without a window, and what it complains about.'''
import pathlib
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service


class Browser_Case(unittest.TestCase):
    '''Each test opens pages of its own; screenshots go where SCREENSHOTS says.'''
    SCREENSHOTS = pathlib.Path('build/view')

    @classmethod
    def setUpClass(cls):
        options = webdriver.ChromeOptions()
        for option in ('--headless=new', '--no-sandbox', '--disable-dev-shm-usage', '--window-size=1500,1100', '--hide-scrollbars',
                       '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--force-device-scale-factor=1'):
            options.add_argument(option)
        options.set_capability('goog:loggingPrefs', {'browser': 'ALL'})
        cls.browser = webdriver.Chrome(service=Service('/usr/bin/chromedriver'), options=options)
        cls.browser.set_script_timeout(60)
        cls.SCREENSHOTS.mkdir(parents=True, exist_ok=True)

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def open(self, address):
        self.browser.get(address)

    def js(self, expression):
        return self.browser.execute_script(f'return {expression}')

    def screenshot(self, name):
        self.browser.save_screenshot(str(self.SCREENSHOTS / f'{name}.png'))

    def assert_no_complaints(self):
        self.assertEqual([entry['message'] for entry in self.browser.get_log('browser')], [])
