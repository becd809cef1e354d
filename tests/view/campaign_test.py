'''The page of a campaign in a real browser.

Usage: campaign_test.py DIRECTORY_OF_PROGRAMS DIRECTORY_FOR_SCREENSHOTS
'''
import json
import pathlib
import tempfile

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By

from browser import EXAMPLES, PROGRAMS, Browser_Case, main, run

RUNS = 12


class Campaign_Test(Browser_Case):
    def test_leads_from_the_distribution_to_the_seed(self):
        with tempfile.TemporaryDirectory() as directory:
            results, page = pathlib.Path(directory) / 'results.jsonl', pathlib.Path(directory) / 'campaign.html'
            lines = [run(PROGRAMS / 'zavra-sim', '--satellite', EXAMPLES / 'satellites/3u.toml', '--vary',
                         EXAMPLES / 'campaigns/detumbling_3u.toml', '--run', '2min', '--seed', seed) for seed in range(RUNS)]
            results.write_text(''.join(lines))
            run(PROGRAMS / 'zavractl', 'campaign', results, '-o', page)
            self.open(f'file://{page}')
            runs = [json.loads(line) for line in lines]
            came = [name for name in runs[0]['results'] if any(run['results'][name] is not None for run in runs)]
            self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, '#histograms svg')), len(came))
            bars = self.js('''[...document.querySelectorAll("#histograms svg")].map((svg) =>
                [...svg.querySelectorAll("rect title")].reduce((sum, title) => sum + parseInt(title.textContent), 0))''')
            self.assertEqual(set(bars), {RUNS}, 'every run is in every histogram')

            self.browser.execute_script('''const up = document.getElementById("up"); up.value = "end_rate_radps";
                up.dispatchEvent(new Event("change"));''')
            marks = self.browser.find_elements(By.CSS_SELECTOR, '#scatter .run')
            self.assertEqual(len(marks), RUNS)
            fastest = max(runs, key=lambda run: run['results']['end_rate_radps'])
            highest = min(marks, key=lambda mark: mark.location['y'])
            self.browser.execute_script('arguments[0].scrollIntoView({block: "center"})', highest)
            ActionChains(self.browser).move_to_element(highest).click().perform()
            self.assertEqual(self.browser.find_element(By.ID, 'run-title').text, f'Seed {fastest["seed"]}')
            self.assertEqual(self.browser.find_element(By.ID, 'run').text,
                             f'{fastest["command_line"]} --report seed_{fastest["seed"]}.html')
            self.screenshot('campaign')
            self.assert_no_complaints()


main()
