"""A virtual printer with its page, a browser before it, and hands for both."""
import atexit
import contextlib
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import time
import unittest
import urllib.request

from selenium import webdriver
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PATIENCE = 20


def free_port():
    with socket.create_server(('127.0.0.1', 0)) as server:
        return server.getsockname()[1]


def until(condition, what='it'):
    """The first true value of a condition; a browser needs a moment for all that it does."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.02)
    raise AssertionError(f'{what} did not come')


class Printer:
    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix='zpl-web-test-')
        self.web, self.raw = free_port(), free_port()
        self.address = f'http://127.0.0.1:{self.web}/'
        program = os.environ.get('ZPL', ROOT / 'build/release/bin/zpl')
        self.process = subprocess.Popen(
            [program, 'serve', '--web', f'127.0.0.1:{self.web}', '--listen', f'127.0.0.1:{self.raw}', '--speed', '10',
             '--out', f'{self.folder}/pages', '--state', f'{self.folder}/state'],
            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
        atexit.register(self.end)
        until(self.answers, 'the page')

    def answers(self):
        with contextlib.suppress(OSError):
            return urllib.request.urlopen(self.address + 'printer').status == 200

    def send(self, stream, is_question=False):
        with socket.create_connection(('127.0.0.1', self.raw)) as client:
            client.sendall(stream.encode())
            return is_question and client.recv(1000)

    def end(self):
        self.process.terminate()
        self.process.wait(PATIENCE)
        shutil.rmtree(self.folder, ignore_errors=True)


class PageTest(unittest.TestCase):
    """Each test gets the page anew, and fails if the page has complained or asked anybody else for anything."""
    printer = browser = None

    @classmethod
    def setUpClass(cls):
        if PageTest.browser:
            return
        PageTest.printer = Printer()
        options = webdriver.ChromeOptions()
        for argument in ('headless=new', 'no-sandbox', 'disable-gpu', 'disable-dev-shm-usage', 'window-size=1440,900'):
            options.add_argument(f'--{argument}')
        options.set_capability('goog:loggingPrefs', {'browser': 'ALL', 'performance': 'ALL'})
        PageTest.browser = webdriver.Chrome(options=options)
        atexit.register(PageTest.browser.quit)

    def setUp(self):
        self.go('')
        self.js('localStorage.clear()')
        self.browser.refresh()
        self.drawn()

    def tearDown(self):
        complaints = [entry['message'] for entry in self.browser.get_log('browser') if entry['level'] != 'INFO']
        self.assertEqual(complaints, [])
        asked = [entry['message'] for entry in self.browser.get_log('performance') if '"Network.requestWillBeSent"' in entry['message']]
        self.assertTrue(asked)
        own = [f'"url":"{address}' for address in (self.printer.address, 'data:', 'blob:')]
        self.assertEqual([one for one in asked if not any(address in one for address in own)], [])

    def go(self, view):
        self.browser.get(f'{self.printer.address}#{view}')

    def js(self, script, *arguments):
        return self.browser.execute_script(script, *arguments)

    def find(self, selector):
        return until(lambda: self.js('return document.querySelector(arguments[0])', selector), selector)

    def shown(self, selector):
        return self.js('return document.querySelector(arguments[0])?.innerText ?? ""', selector)

    def editor(self, script, *arguments):
        return self.js("const editor = document.querySelector('.CodeMirror').CodeMirror; " + script, *arguments)

    def text(self):
        return self.editor('return editor.getValue()')

    def drawings(self):
        return self.js("return Number(document.getElementById('status').dataset.drawn)") or 0

    def drawn(self, before=0):
        until(lambda: self.drawings() > before, 'the drawing')
        self.js('return new Promise((done) => setTimeout(done, 50))')  # what the page shows a moment later

    def write(self, text):
        before = self.drawings()
        self.editor('editor.setValue(arguments[0]); editor.setCursor(0, 0)', text)
        self.drawn(before)

    def type(self, *keys, held=()):
        actions = ActionChains(self.browser)
        (actions.key_down(held).send_keys(*keys).key_up(held) if held else actions.send_keys(*keys)).perform()

    def box(self, index):
        """The middle of a field on the screen."""
        return self.js('''const box = document.querySelectorAll('#boxes rect')[arguments[0]].getBoundingClientRect();
            return [box.left + box.width / 2, box.top + box.height / 2].map(Math.round)''', index)

    def pull(self, start, *steps):
        """Presses at a place, moves by steps, and lets go."""
        actions = ActionChains(self.browser, duration=0)
        pointer = actions.w3c_actions.pointer_action
        x, y = start
        pointer.move_to_location(x, y)
        pointer.pointer_down()
        for right, down in steps:
            x, y = x + right, y + down
            pointer.move_to_location(x, y)
        pointer.pointer_up()
        actions.perform()
