"""Labels written in the browser."""
from selenium.webdriver.common.keys import Keys

from desk import PageTest, until


def label(*lines):
    return '^XA\n^PW600^LL400\n' + '\n'.join(lines) + '\n^XZ\n'


class EditorTest(PageTest):
    def ink(self):
        return self.js('''const paper = document.getElementById('paper');
            const dots = paper.getContext('2d').getImageData(0, 0, paper.width, paper.height).data;
            let ink = 0;
            for (let i = 0; i < dots.length; i += 4) ink += dots[i] < 128 ? 1 : 0;
            return ink''')

    def test_redraws_while_typing(self):
        self.write(label('^FO20,20^GB20,60,20^FS'))
        self.assertEqual(self.ink(), 20 * 60)
        self.editor("editor.focus(); editor.setCursor(2, '^FO20,20^GB20'.length)")
        self.type('0')
        self.editor("editor.replaceSelection('0', 'end'); editor.execCommand('delCharBefore')")
        until(lambda: self.ink() == 200 * 60 - 160 * 20, 'the wider box')

    def test_shows_where_the_pointer_and_the_cursor_are(self):
        box = '^FO300,200^GB120,60,60^FS'
        self.write(label('^CI28', '^FO20,20^A0N,40,40^FDÄÖÜ €𝄞^FS', box))
        self.pull(self.box(1))
        self.assertEqual(self.editor('return editor.getSelection()'), box)
        self.assertEqual(self.shown('#fields tr.selected td'), '2')
        self.editor('editor.setCursor(3, 3)')
        until(lambda: self.shown('#fields tr.selected td') == '1', 'the field at the cursor')
        self.assertEqual(self.js("return [...document.querySelectorAll('#boxes rect')].map((box) => box.matches('.selected'))"), [True, False])
        self.find('#fields tbody tr:nth-child(2)').click()
        self.assertEqual(self.editor('return editor.getSelection()'), box)

    def test_follows_the_cursor_from_label_to_label(self):
        self.write(label('^FO20,20^GB100,50,50^FS') + label('^FO20,20^GB10,10,10^FS', '^FX second'))
        until(lambda: self.js("return document.getElementById('page').options.length") == 2, 'the list of labels')
        until(lambda: self.editor('editor.setCursor(7, editor.getCursor().ch ^ 1); return true') and self.ink() == 100, 'the second label')
        self.find('#previous').click()
        until(lambda: self.ink() == 5000, 'the first label')
        self.js('return new Promise((done) => setTimeout(done, 400))')
        self.assertEqual(self.ink(), 5000)

    def test_moves_fields(self):
        box = '^GB80,60,60^FS'
        # commands, field, how far the hand goes in dots of the page, commands behind it
        cases = [
            ('^FO40,60' + box, 0, (30, 50), '^FO70,110' + box),
            ('^FT40,160,0^GB80,60,60^FS', 0, (30, 50), '^FT70,210,0' + box),
            (box, 0, (30, 50), '^FO30,50' + box),
            ('^FO40' + box, 0, (30, 50), '^FO70,50' + box),
            ('^FO40,60' + box, 0, (-200, 10), '^FO0,70' + box),
            ('^POI^FO40,60' + box, 0, (-30, -50), '^POI^FO70,110' + box),
            ('^PMY^FO40,60' + box, 0, (-30, 50), '^PMY^FO70,110' + box),
            ('^POI^PMY^FO40,60' + box, 0, (30, -50), '^POI^PMY^FO70,110' + box),
            ('^LH10,10^FO40,60' + box, 0, (30, 50), '^LH10,10^FO70,110' + box),
            ('^JMB^FO40,60' + box, 0, (30, 50), '^JMB^FO55,85' + box),
            ('^MUM^FO66.25,7.5^GB2,8,1^FS', 0, (30, 50), '^MUM^FO70,13.8^GB2,8,1^FS'),
            ('^MUD,150,300^FO20,30^GB40,30,30^FS', 0, (30, 50), '^MUD,150,300^FO35,55^GB40,30,30^FS'),
            ('^CC*\n*FO40,60*FDx*FS*FO240,60*GB80,60,60*FS*CC^', 1, (30, 50), '^CC*\n*FO40,60*FDx*FS*FO270,110*GB80,60,60*FS*CC^'),
            ('^FO40,60^FN1^A0N,60,60^FS^FN1^FDOOO^FS', 0, (30, 50), '^FO70,110^FN1^A0N,60,60^FS^FN1^FDOOO^FS'),
            ('^FDé€𝄞^FS^FO40,60' + box, 1, (30, 50), '^FDé€𝄞^FS^FO70,110' + box),
        ]
        self.find('#zoom option[value="1"]').click()
        for commands, field, (right, down), wanted in cases:
            with self.subTest(commands):
                self.write(label(commands))
                before = self.drawings()
                self.pull(self.box(field), (right // 2, down // 2), (right - right // 2, down - down // 2))
                until(lambda: self.text() != label(commands), 'the change')
                self.drawn(before)
                self.assertEqual(self.text(), label(wanted))
                self.type('z', held=Keys.CONTROL)
                self.assertEqual(self.text(), label(commands))

    def test_moves_by_arrow_keys_on_a_turned_view(self):
        self.write(label('^FO40,60^GB80,60,60^FS'))
        self.find('#rotate').click()
        self.pull(self.box(0))
        self.type(Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
        self.type(Keys.ARROW_DOWN, held=Keys.SHIFT)
        self.assertEqual(self.text(), label('^FO50,58^GB80,60,60^FS'))

    def test_outlines_what_will_not_scan(self):
        self.write(label('^FO20,20^A0N,40^FDfine^FS', '^FO100,100^BEN,80^FD12345^FS', '^FO500,200^BCN,80^FDtoo wide for it^FS', '^XY'))
        bad = self.js("return [...document.querySelectorAll('#fields tr.bad')].map((row) => row.title)")
        self.assertEqual(len(bad), 2)
        self.assertIn('no barcode can be made of the data "12345"', bad[0])
        self.assertIn('is cut', bad[1])
        self.assertEqual(self.js("return document.querySelectorAll('#boxes rect.bad').length"), 2)
        self.assertIn('command ^XY is not known', self.shown('#findings'))
        self.assertEqual(self.js("return document.querySelector('.finding[title*=\"^XY\"]').textContent"), '^XY')

    def test_helps_and_completes(self):
        self.write('^XA\n^FO20,20\n^XZ')
        self.editor("editor.focus(); editor.setCursor(1, '^FO20,'.length)")
        until(lambda: 'field origin' in self.shown('#help'), 'the help')
        self.assertEqual(self.shown('#help .current'), 'y [0]')
        self.editor('editor.setCursor(1, 99)')
        self.type('^G', 'B')
        until(lambda: self.shown('.CodeMirror-hint').startswith('^GB'), 'the completion')
        self.type(Keys.ENTER)
        self.assertIn('^FO20,20^GB\n', self.text())

    def test_opens_examples(self):
        self.go('examples')
        until(lambda: self.js("return [...document.querySelectorAll('.card img')].filter((one) => one.naturalWidth > 100).length") == 7, 'pictures')
        self.find('.card:nth-child(2)').click()
        until(lambda: 'Rye crispbread' in self.text(), 'the example')

    def test_shows_hostile_text_as_text(self):
        words = '<img src=x onerror="document.title=\'taken\'"><script>document.title="taken"</script>'
        self.write(label(f'^FO20,20^A0N,30^FD{words}^FS', f'^{words}', f'^FO20,90^BEN^FD{words}^FS'))
        self.assertIn('<img', self.shown('#fields td.data'))
        self.assertIn('<img', self.shown('#findings'))
        self.pull(self.box(0))
        self.assertEqual(self.js("return document.querySelectorAll('main img[src=x], main script').length"), 0)
        self.assertNotIn('taken', self.browser.title)

    def test_keeps_bytes(self):
        wrong = self.browser.execute_async_script('''const done = arguments[0];
            import('/bytes.js').then(({decode, encode, Offsets}) => {
                const wrong = [];
                const streams = [[0x5e, 0xff, 0xfe, 0x0d, 0x0a], [0xef, 0xbb, 0xbf, 0x5e], [0xc3, 0xa9, 0x0d], [0xc3], [0xed, 0xa0, 0x80], []];
                for (const stream of streams) {
                    const {text, encoding} = decode(new Uint8Array(stream));
                    if (String([...encode(text, encoding)]) !== String(stream)) wrong.push(stream);
                }
                const text = 'aé€𝄞\\ud834x\\udd1e'.repeat(700);
                const offsets = new Offsets(text, 'utf-8');
                for (const index of [0, 1, 2, 3, 5, 6, 7, 8, 1023, 1024, 1025, 2047, 2048, 2049, 4900, text.length]) {
                    const isAmid = /[\\ud800-\\udbff]$/.test(text.slice(0, index)) && /^[\\udc00-\\udfff]/.test(text.slice(index));
                    if (isAmid) continue;
                    const bytes = new TextEncoder().encode(text.slice(0, index)).length;
                    if (offsets.toByte(index) !== bytes || offsets.toIndex(bytes) !== index) wrong.push(index);
                }
                done(wrong);
            }, (error) => done(String(error)));''')
        self.assertEqual(wrong, [])

