#!/usr/bin/env python3
"""A real browser on the reference page of the example, of a table of every kind, and of those in the folder OPTXV_TABLES."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path[:0] = [str(Path(__file__).parent), str(Path(__file__).parents[1] / 'docs')]
import chromium  # noqa: E402  (found beside this file)
import tablefacts  # noqa: E402  (found in tests/docs)

SHOWN = 'return [...document.querySelectorAll("main article")].filter(a => a.checkVisibility()).map(a => a.id)'
GROUPS = 'return [...document.querySelectorAll("nav li")].filter(e => e.checkVisibility()).map(e => e.textContent)'
MARKS = 'return [...document.querySelectorAll(arguments[0] + " mark")].filter(e => e.checkVisibility()).map(e => e.textContent)'
HOSTILE = b'''evil group 1 1 </h2><script>hit=1</script><img src=x onerror=hit=2> "x' onfocus=hit=3
rate integer 1 1 0 9 1 1 </p></article></script><script>hit=4</script><svg onload=hit=5>
 &lt;b&gt; \xe2\x80\xae\xff\x1b[31m\xc2\x85 ' onclick="hit=6" javascript:hit=7
mode enumstr 2 "</td><img src=y onerror=hit=8>" 1 1 Mode
 "</td><img src=y onerror=hit=8>" 1 <iframe src=javascript:hit=9>
logname string 3 "' onclick=hit=10 x='" 1 1 <!-- Name
old synonym rate
gone deprecated
 old <img src=z onerror=hit=11>
'''
COLOURS = '''const read = (e, p) => getComputedStyle(e)[p].match(/[\\d.]+/g).map(Number);
             const back = e => { for (; e; e = e.parentElement) { const c = read(e, 'backgroundColor');
                                                                  if (c[3] !== 0) return c; } return [255, 255, 255]; };
             return ['body', '.soft', '.note', 'nav a', 'dt', 'dd', 'h3 a', 'input', 'mark'].map(s => document.querySelector(s))
                 .map(e => [read(e, 'color'), back(e)])'''


def luminance(colour):
    parts = [c / 255 / 12.92 if c <= 10 else ((c / 255 + .055) / 1.055) ** 2.4 for c in colour[:3]]
    return .2126 * parts[0] + .7152 * parts[1] + .0722 * parts[2]


def contrast(*colours):
    """The ratio of the Web Content Accessibility Guidelines."""
    low, high = sorted(map(luminance, colours))
    return (high + .05) / (low + .05)


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.tables = tablefacts.tables(Path('tests/support/everykind.def'))
        cls.driver = cls.enterClassContext(chromium.browser())
        cls.script = staticmethod(cls.driver.execute_script)

    def reference(self, table=Path('examples/solver.def'), **how):
        output = self.folder / table.stem
        subprocess.run([os.environ['OPTXV_COMMAND'], 'reference', table, '--force', '-o', output], stderr=subprocess.DEVNULL,
                       check=not tablefacts.facts(table)[1], timeout=60)  # --force: a faulty table too
        chromium.show(self.driver, output / 'index.html', **how)

    def type(self, text):
        box = self.driver.find_element('id', 'search-box')
        box.clear()
        box.send_keys(text)
        return self.script(SHOWN), self.driver.find_element('id', 'search-state').text

    def press(self, key):
        self.driver.switch_to.active_element.send_keys(key)

    def until(self, check):
        from selenium.webdriver.support.wait import WebDriverWait
        WebDriverWait(self.driver, 20, .02).until(lambda _: check())

    def at(self, words, address):
        """Waits for a search, and that the address tells of it."""
        self.until(lambda: self.script('return [document.getElementById("search-box").value, location.hash]') == [words, address])
        return self.script(SHOWN)


class Reference(Pages):
    def test_every_option_is_shown_and_nothing_is_asked_for(self):
        for table in self.tables:
            with self.subTest(table.stem):
                chromium.requests(self.driver), self.driver.get_log('browser')
                self.reference(table, width=360)
                self.assertEqual([url for url in chromium.requests(self.driver) if not url.startswith(('data:', 'about:'))],
                                 [self.driver.current_url])
                self.assertEqual(self.driver.get_log('browser'), [])
                self.assertEqual(len(self.script(SHOWN)), len(tablefacts.facts(table)[0]))
                self.assertLessEqual(self.script('return document.documentElement.scrollWidth'), 360)

    def test_names_come_before_texts_and_counts_follow(self):
        from selenium.webdriver.common.keys import Keys
        self.reference()
        everything, whole, option = self.script(SHOWN), self.script(GROUPS), 'option-{}'.format
        rows = [*((words, ['time_limit'], ['Limits (1 of 3)']) for words in ('reslim', 'TIME-limit', 'timelimit', 'limit time')),
                ('DIVE value', ['dive_first'], ['Search (1 of 7)']),
                ('cuts', ['cover_cuts', 'gomory_cuts', 'all_cuts'], ['Search (3 of 7)']),
                ('tol', ['tolerances', 'feasibility_tol', 'optimality_tol'], ['Tolerances and scaling (3 of 5)']),
                ('line', ['whole_line', 'method', 'print_level'],
                 ['Search (1 of 7)', 'Output (1 of 4)', 'Control of the reader (1 of 5)']),
                ('1e-6', ['feasibility_tol', 'optimality_tol'], ['Tolerances and scaling (2 of 5)']),
                ('barrier crossover', ['method'], ['Search (1 of 7)']), ('Kind', [], []), ('reslim gomory', [], []), ('_-', [], [])]
        for words, names, groups in rows:
            shown, state = self.type(words)
            self.assertEqual((shown, self.script(GROUPS)), ([*map(option, names)], groups), words)
            self.assertEqual(state, f'{len(names)} of {len(everything)} options found' if names else 'No option has all of these words')
            self.press(Keys.ESCAPE)
            self.assertEqual((self.script(SHOWN), self.script(GROUPS)), (everything, whole))
            self.assertEqual(self.script(MARKS, 'main'), [])

    def test_hits_are_marked_and_labels_are_not(self):
        self.reference()
        for words, where, marks in (('timelimit', 'h3', ['time_limit']), ('limit time', 'h3', ['time', 'limit']),
                                    ('res.lim', 'main', []), ('reslim default', '.name', []), ('reslim', 'main', ['reslim']),
                                    ('ITER-lim', '.name', ['iterlim']), ('barrier cross', 'td', ['crossover'[:5]]),
                                    ('barrier', 'table', ['barrier'])):
            self.type(words)
            self.assertEqual(self.script(MARKS, where), marks, words)

    def test_the_address_holds_the_search(self):
        from selenium.webdriver.common.keys import Keys
        self.reference()
        page, everything = self.driver.current_url, self.script(SHOWN)
        self.type('no value'), self.at('no value', '#?q=no+value')
        self.driver.back()
        self.assertEqual(self.at('', ''), everything)
        self.driver.get('about:blank'), self.driver.get(page + '#?q=reslim+100%25')
        self.assertEqual(self.at('reslim 100%', '#?q=reslim+100%25'), [])
        self.assertEqual(self.type('reslim')[0], self.at('reslim', '#?q=reslim'))
        self.press(Keys.ENTER)
        self.assertEqual(self.driver.switch_to.active_element.text, 'time_limit')
        self.press(Keys.ENTER)  # its own link: what is shown stays
        self.assertEqual(self.at('reslim', '#option-time_limit'), ['option-time_limit'])
        self.script('location.hash = "option-.scale"')  # a place that is hidden shows itself
        self.assertEqual(self.at('', '#option-.scale'), everything)
        self.until(lambda: 0 <= self.script('return document.getElementById("option-.scale").getBoundingClientRect().top') < 700)
        self.driver.back(), self.driver.back()
        self.assertEqual(self.at('reslim', '#?q=reslim'), ['option-time_limit'])
        self.driver.find_element('css selector', 'nav li:not([hidden]) a').click()
        self.assertEqual(self.driver.switch_to.active_element.text, 'time_limit')
        self.assertEqual(self.at('reslim', '#?q=reslim'), ['option-time_limit'])
        self.press(Keys.ESCAPE), self.driver.find_element('id', 'search-box').send_keys(Keys.ESCAPE)
        self.assertEqual(self.at('', ''), everything)

    def test_a_long_list_grows_as_one_reads(self):
        table = self.folder / 'long.def'
        table.write_text(''.join(f'rate_{i} integer 1 1 0 9 1 1 Rate\n' for i in range(300)), encoding='latin-1')
        self.reference(table)
        shown, state = self.type('rate')
        self.assertEqual(state, '300 of 301 options found')
        self.assertLess(len(shown), 300)
        self.until(lambda: self.script('scrollBy(0, 99999)') or len(self.script(SHOWN)) == 300)
        self.assertEqual(self.script(SHOWN), [f'option-rate_{i}' for i in range(300)])

    def test_no_text_breaks_out(self):
        table = self.folder / 'hostile.def'
        table.write_bytes(HOSTILE)
        self.reference(table)
        for words in ('', 'hit', '<img', '&lt;b', '"', "'", '\\x1B[31m', 'script>hit=4', '\\xff'):
            shown, _ = self.type(words)
            self.assertTrue(shown, words)
            self.assertIsNone(self.script('return window.hit'))
            self.assertEqual(self.script('return document.querySelectorAll("img, svg, iframe, [onclick], script:not(:only-of-type)").length'), 0)
        self.assertIn('\\xE2\\x80\\xAE\\xFF\\x1B[31m\\xC2\\x85', self.script('return document.body.textContent'))

    def test_both_schemes_are_legible(self):
        self.reference()
        self.type('e')
        for scheme in ('light', 'dark'):
            chromium.emulate(self.driver, scheme=scheme)
            for colours in self.script(COLOURS):
                self.assertGreaterEqual(contrast(*colours), 4.5, (scheme, colours))
            self.assertEqual(luminance(self.script(COLOURS)[0][1]) < .5, scheme == 'dark')


if __name__ == '__main__':
    chromium.skip()
    unittest.main()
