"""Takes the pictures of the page that the documents show, into the folder named; see tools/update-pictures."""
import sys

from desk import PageTest, ROOT, until


class Pictures(PageTest):
    def take(self, name):
        self.browser.execute_cdp_cmd('Emulation.setDeviceMetricsOverride', {'width': 1280, 'height': 800, 'deviceScaleFactor': 1, 'mobile': False})
        self.js('return new Promise((done) => setTimeout(done, 600))')
        self.browser.save_screenshot(f'{sys.argv[1]}/{name}.png')

    def runTest(self):
        damaged = (ROOT / 'examples/shipping-label.zpl').read_text().replace('^FO90,630^BCN', '^FO400,630^BCN')
        self.write(damaged)
        self.editor('editor.setCursor(38, 8)')
        self.take('web-editor')
        for name in ('inventory-batch', 'stored-format', 'product-label'):
            self.printer.send((ROOT / f'examples/{name}.zpl').read_text())
        self.go('printer')
        until(lambda: 'Rye_crispbread-1' in self.shown('#jobs'), 'the last job')
        self.find('[data-job=""]').click()
        self.take('web-printer')


Pictures.setUpClass()
Pictures().debug()
