"""The virtual printer, seen in the browser."""
from desk import PageTest, until


def labels(count, name):
    return f'^XA^PW200^LL100^FO10,10^A0N,30^FD{name}^FS^PQ{count}^XZ'


class PrinterTest(PageTest):
    def setUp(self):
        super().setUp()
        self.go('printer')

    def rows(self):
        return self.js("return [...document.querySelectorAll('#jobs .job')].map((row) => row.innerText.split('\\n').map((word) => word.trim()).filter(Boolean))")

    def row(self, job):
        return next((row for row in self.rows() if row[0] == job), None)

    def whole_pictures(self):
        return self.js("return [...document.querySelectorAll('#gallery img')].filter((one) => one.complete && one.naturalWidth === 200).length")

    def press(self, word):
        self.find(f'[data-word="{word}"]').click()

    def test_shows_jobs_as_they_come_and_their_pages_stay(self):
        self.printer.send(labels(3, 'first'))
        until(lambda: self.shown('#job-head h2') == 'first-1' and self.whole_pictures() == 3, 'the pages')
        self.printer.send(labels(1, 'second'))
        until(lambda: self.shown('#job-head h2') == 'second-1', 'the second job')
        self.browser.refresh()
        self.find('[data-job="first-1"]').click()
        until(lambda: self.whole_pictures() == 3, 'the pages again')
        self.assertIn('3 / 3', self.row('first-1'))
        until(lambda: self.shown('#job-detail .stream') == labels(3, 'first'), 'the stream')
        self.find('#open-job').click()
        until(lambda: self.text() == labels(3, 'first'), 'the stream in the editor')

    def test_prints_from_the_editor(self):
        self.go('editor')
        self.write(labels(2, 'edited'))
        self.find('#print').click()
        self.go('printer')
        until(lambda: (self.row('edited-1') or [''])[-2:-1] == ['2 / 2'], 'the job')

    def test_pauses_and_goes_on_and_cancels(self):
        self.press('pause')
        self.find('#printer-state[data-state=paused]')
        self.printer.send(labels(4, 'waiting'))
        self.press('resume')
        until(lambda: (self.row('waiting-1') or [''])[-2:-1] == ['4 / 4'], 'its pages')
        self.printer.send(labels(300, 'dropped'))
        until(lambda: self.row('dropped-1'), 'the job')
        self.press('cancel')
        self.find('[data-job="dropped-1"] .lamp.given-up')
        self.assertRegex(self.row('dropped-1')[-2], r'^\d\d? / 300$')

    def test_tells_findings_and_answers_and_filters_the_log(self):
        words = '<img src=x onerror="document.title=1">'
        self.printer.send(f'^XA^FO20,20^BEN,50^FD{words}^FS^FO20,100^A0N,30^FDodd one^FS^XZ')
        until(lambda: words in self.shown('#job-detail .told'), 'the finding')
        self.printer.send('~HS', is_question=True)
        self.find('#tab-answers').click()
        until(lambda: '030,0,0,' in self.shown('#answers'), 'the answer')
        self.find('#tab-log').click()
        self.find('#log-filter').send_keys('no barcode')
        kinds = "return [...document.querySelectorAll('#log li:not([hidden])')].map((row) => row.dataset.kind)"
        self.assertEqual(set(self.js(kinds)), {'finding'})
        self.find('#log-kinds :nth-child(4)').click()
        self.assertEqual(self.js(kinds), [])
        self.assertEqual(self.js("return document.querySelectorAll('main img[src=x]').length"), 0)

    def test_shows_and_deletes_what_is_stored(self):
        self.printer.send('~DGR:DOTS.GRF,8,1,FF818181818181FF^XA^DFR:FORM.ZPL^FS^FO9,9^GB30,30,3^FS^XZ')
        self.printer.send(labels(1, 'behind'))
        until(lambda: self.row('behind-1'), 'the job')
        self.find('#tab-objects').click()
        until(lambda: 'R:FORM.ZPL' in self.shown('#panel-objects'), 'the format')
        until(lambda: self.js("return document.querySelector('[alt*=DOTS]')?.naturalHeight") == 8, 'the picture')
        self.find('[aria-label="Delete R:DOTS.GRF"]').click()
        until(lambda: 'DOTS' not in self.shown('#panel-objects'), 'the end of the picture')

