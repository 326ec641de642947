#!/usr/bin/env python3
"""A real browser on the HTML table and on the reference page of the example, a table of every kind, and OPTXV_TABLES."""
import math
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path[:0] = [str(Path(__file__).parent), str(Path(__file__).parents[1] / 'docs')]
import chromium  # noqa: E402  (found beside this file)
import tablefacts  # noqa: E402  (found in tests/docs)
from tablefacts import ENUMINT, HEAD, LIMITS, MACRO, STRLIST  # noqa: E402

CELLS = 'return [...document.querySelectorAll("table tr")].map(r => [...r.cells].map(c => c.textContent.slice(1, -1)))'
AROUND = 'return [document.querySelectorAll("table").length, document.querySelectorAll("td").length, document.body.innerText]'
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


def seen(text):
    """A text as a page without a declared encoding shows it: what has no entity is windows-1252, and one entity of ours
    is none, so the browser takes the beginning for that of the cedilla."""
    bytes_ = text.encode('latin-1').decode('cp1252', errors='replace')
    return ''.join('\xb8le;' if was == '\xb8' else was if was >= '\xa0' else now for was, now in zip(text, bytes_))


def quoted(text):
    return f'"{text}"' if text == '' or any(c in text for c in ' \t,') else text


def rows(path):
    """The rows that a browser makes of the table of a definition: a row that is not closed ends where the next begins,
    and cells after a closed row begin one of their own."""
    options, synonyms, _ = tablefacts.facts(path)
    found = [HEAD]
    for each in options:
        row = [each['name'], each['word'], each['refnr']]
        if each['kind'] not in (STRLIST, MACRO):
            default = quoted(each['default']) if each['kind'] in (tablefacts.STRING, tablefacts.ENUMSTR) else each['default']
            row += [default, each['low'], each['high'], each['group'], each['page'], each['text']]
        found.append(row)
        found += [['', '', '', *value[:1], '', '', '', *value[1:]] for value in each['values']]
        if each['kind'] == ENUMINT and not each['values']:
            found.append([])
        found += [['', '', member] for member in each['members'] if each['kind'] != MACRO]
    return found + [[synonym, 'synonym', name] for synonym, name in synonyms]


def matching(expected, cells):
    """The cells, those where a number is expected as that number if they read so."""
    def same(want, cell):
        if isinstance(want, str):
            return want if cell == seen(want) else f'shown: {cell}'
        try:
            number = LIMITS[cell] if cell in LIMITS else float(cell)
        except ValueError:
            return cell
        return want if math.isclose(number, want, rel_tol=5e-15) else cell  # reals come with 15 digits
    return [same(*pair) for pair in zip(expected, cells)] + cells[len(expected):]


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
        every = cls.folder / 'every.def'
        every.write_text(tablefacts.EVERY_KIND, encoding='latin-1')
        cls.tables = tablefacts.tables(every)
        cls.driver = cls.enterClassContext(chromium.browser())
        cls.script = staticmethod(cls.driver.execute_script)

    def document(self, form, table):
        output = self.folder / f'{table.stem}.{form}'
        done = subprocess.run([os.environ['OPTXV_COMMAND'], form, table, '--force', '-o', output], stderr=subprocess.DEVNULL, timeout=60)
        self.assertEqual(done.returncode, 1 if tablefacts.facts(table)[2] else 0)  # --force: a faulty table too
        return output / 'index.html' if form == 'reference' else output.rename(f'{output}.html')

    def reference(self, table=Path('examples/solver.def'), **how):
        chromium.show(self.driver, self.document('reference', table), **how)

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


class Table(Pages):
    def test_the_browser_mends_the_rows_as_expected(self):
        for table in self.tables:
            with self.subTest(table.stem):
                expected = rows(table)
                chromium.show(self.driver, self.document('html', table))
                found = self.script(CELLS)
                self.assertEqual([len(row) for row in found], [len(row) for row in expected])
                for number, (want, row) in enumerate(zip(expected, found)):
                    self.assertEqual(matching(want, row), want, f'row {number}')
                tables, cells, text = self.script(AROUND)
                self.assertEqual((tables, cells), (1, sum(map(len, expected))))
                self.assertEqual(text.split('\n')[0].split('\t'), HEAD)  # no text has fallen out before the table


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
