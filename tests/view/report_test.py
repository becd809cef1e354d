'''Reports of flights in a real browser.

Usage: report_test.py DIRECTORY_OF_PROGRAMS DIRECTORY_FOR_SCREENSHOTS
'''
import csv
import pathlib
import tempfile

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By

from browser import EXAMPLES, PROGRAMS, Browser_Case, main, run

EXPECTED_PLOTS = {'rates', 'attitude', 'wheels', 'field', 'sun'}


class Report_Test(Browser_Case):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.room = tempfile.TemporaryDirectory()
        cls.directory = pathlib.Path(cls.room.name)
        cls.report, cls.record = cls.directory / 'run.html', cls.directory / 'run.csv'
        run(PROGRAMS / 'zavra-sim', '--satellite', EXAMPLES / 'satellites/3u.toml', '--scenario',
            EXAMPLES / 'flights/stuck_wheel.toml', '--run', '6h', '--report', cls.report, '--record', cls.record,
            '--record-interval', '100ms')
        with open(cls.record, newline='') as lines:
            cls.truth = [{name: float(value) for name, value in row.items() if value} for row in csv.DictReader(lines)]

    @classmethod
    def tearDownClass(cls):
        cls.room.cleanup()
        super().tearDownClass()

    def setUp(self):
        self.open(f'file://{self.report}')

    def tearDown(self):
        self.assert_no_complaints()

    def test_is_one_small_file(self):
        self.assertLess(self.report.stat().st_size, 3_000_000)
        self.assertEqual(self.js('performance.getEntriesByType("resource").length'), 0)
        self.screenshot('report')

    def test_plots_have_the_points_and_the_extremes(self):
        plots = dict(self.js('page.plots.graphs.map((g) => [g.kind.id, g.numRows()])'))
        self.assertGreaterEqual(set(plots), EXPECTED_PLOTS)
        self.assertEqual(set(plots.values()), {self.js('page.flight.time_s.length')})
        self.assertGreater(self.js('page.flight.time_s.length'), 2000)
        for column in ('angular_velocity_z_radps', 'wheel_speed_x_radps', 'magnetic_field_y_t'):
            values = [row[column] for row in self.truth]
            for least_or_greatest in (min, max):
                shown = self.js(f'Math.{least_or_greatest.__name__}(...page.flight.curves.{column})')
                self.assertAlmostEqual(shown, least_or_greatest(values), delta=1e-4 * max(map(abs, values)), msg=column)
        inked = self.js('''page.plots.graphs.map((g) => {
            const {x, y, w, h} = g.getArea(), canvas = g.hidden_ctx_.canvas, scale = canvas.width / canvas.clientWidth;
            const points = g.hidden_ctx_.getImageData(x * scale, y * scale, w * scale, h * scale).data;
            return points.filter((value, i) => i % 4 === 3 && value > 100).length; })''')
        self.assertGreater(min(inked), 500, 'every plot has a curve')

    def test_scrubbing_moves_the_picture_to_the_truth(self):
        pictures = set()
        for row in (self.truth[1003], self.truth[90002], self.truth[-44]):
            self.browser.execute_script('''const scrub = document.getElementById("scrub");
                scrub.value = arguments[0]; scrub.dispatchEvent(new Event("input"));''', row['time_s'])
            pictures.add(self.js('document.querySelector("#scene canvas").toDataURL()'))
            q = self.js('page.scene.body.quaternion.toArray()')
            cosine = abs(sum(a * row[f'q_{i}'] for i, a in enumerate(q, 1)))
            self.assertGreater(cosine, 0.9995, row['time_s'])
            sun = self.js('''new THREE.Vector3(0, 1, 0).applyQuaternion(page.scene.arrows.get("sun").quaternion)
                .applyQuaternion(page.scene.body.quaternion.clone().conjugate()).toArray()''')
            self.assertGreater(sum(a * row[f'sun_vector_{axis}'] for a, axis in zip(sun, 'xyz')), 0.99)
            self.assertIn(f'{row["time_s"] // 3600:.0f}:', self.browser.find_element(By.ID, 'now').text)
        self.assertEqual(len(pictures), 3)

    def test_it_plays(self):
        before = self.js('page.time')
        self.browser.find_element(By.ID, 'play').click()
        self.browser.execute_async_script('setTimeout(arguments[0], 500)')
        self.browser.find_element(By.ID, 'play').click()
        after = self.js('page.time')
        self.assertGreater(after, before + 5)
        self.browser.execute_async_script('setTimeout(arguments[0], 300)')
        self.assertEqual(self.js('page.time'), after)

    def test_all_plots_zoom_together(self):
        chart = self.browser.find_element(By.CSS_SELECTOR, '#plot-attitude .chart')
        ActionChains(self.browser).move_to_element(chart).click_and_hold().move_by_offset(150, 0).release().perform()
        ranges = self.js('page.plots.graphs.map((g) => g.xAxisRange())')
        self.assertEqual([each for each in ranges if each != ranges[0]], [])
        self.assertLess(ranges[0][1] - ranges[0][0], 6 * 3600 / 3)
        self.screenshot('zoomed')
        ActionChains(self.browser).double_click(chart).perform()
        self.assertEqual(self.js('page.plots.graphs[0].xAxisRange()'), [0, 6 * 3600])

    def test_tells_what_happened_and_how_to_repeat_it(self):
        text = self.browser.find_element(By.ID, 'tables').text
        for said in ('detumbling', 'wheel x', 'Start_OperationMode_Detumbling', '{"sticks":true,"wheel":"x"}', 'zavra-sim --satellite'):
            self.assertIn(said, text)
        self.assertEqual(self.js('page.flight.files[0].text'), (EXAMPLES / 'satellites/3u.toml').read_text())

    def test_a_record_alone_makes_a_report_too(self):
        page = self.directory / 'record.html'
        run(PROGRAMS / 'zavractl', 'report', self.record, '-o', page)
        self.open(f'file://{page}')
        self.assertGreaterEqual(set(self.js('page.plots.graphs.map((g) => g.kind.id)')), EXPECTED_PLOTS)
        self.assertIn('made from a record alone', self.browser.find_element(By.ID, 'tables').text)


main()
