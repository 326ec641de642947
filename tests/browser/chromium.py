"""Headless Chromium for the tests of what a browser makes of the documents.

skip() ends the program with the exit status that ctest takes for a skip, where the browser is not installed.
"""
import json
import shutil
import sys
import tempfile
from contextlib import contextmanager
from importlib.util import find_spec
from pathlib import Path

SKIPPED = 77
FLAGS = '''headless no-sandbox disable-gpu disable-quic no-first-run disable-background-networking disable-component-update
           disable-sync hide-scrollbars'''


def skip():
    missing = [name for name in ('chromium', 'chromedriver') if not shutil.which(name)]
    missing += [] if find_spec('selenium') else ['selenium']
    if missing:
        print('skipped: not installed: ' + ', '.join(missing))
        sys.exit(SKIPPED)


@contextmanager
def browser():
    """A driver with an empty profile, which is gone afterwards."""
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which('chromium')
    options.set_capability('goog:loggingPrefs', {'performance': 'ALL', 'browser': 'ALL'})
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        for flag in [*FLAGS.split(), f'user-data-dir={profile}']:
            options.add_argument('--' + flag)
        driver = webdriver.Chrome(service=Service(shutil.which('chromedriver')), options=options)
        try:
            yield driver
        finally:
            driver.quit()


def show(driver, path, width=1000):
    """Opens a file in a window of that width."""
    driver.execute_cdp_cmd('Emulation.setDeviceMetricsOverride',
                           {'width': width, 'height': 800, 'deviceScaleFactor': 1, 'mobile': False})
    emulate(driver)
    driver.get('about:blank')
    driver.get(Path(path).resolve().as_uri())


def emulate(driver, scheme='light'):
    driver.execute_cdp_cmd('Emulation.setEmulatedMedia', {
        'media': 'screen', 'features': [{'name': 'prefers-color-scheme', 'value': scheme}]})


def requests(driver):
    """The addresses asked for since the last call."""
    events = (json.loads(entry['message'])['message'] for entry in driver.get_log('performance'))
    return [event['params']['request']['url'] for event in events if event['method'] == 'Network.requestWillBeSent']
