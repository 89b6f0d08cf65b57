"""Looks at finished pages: whether each link leads somewhere, and what a browser does with them.

usage: check.py HTML PICTURES

Says what is wrong and exits with 1. The browser opens files, without a server; PICTURES gets what it shows.
"""
import html.parser
import os
import sys
import time
import urllib.parse


class Page(html.parser.HTMLParser):
    """Its links, and the places in it that links can lead to."""

    def __init__(self, text):
        super().__init__()
        self.links, self.places, self.twice = [], set(), set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        place = given.get('id')
        if place is not None:
            (self.twice if place in self.places else self.places).add(place)
        if tag == 'a' and given.get('name'):
            self.places.add(given['name'])
        for name in ('href', 'src'):
            if given.get(name):
                self.links.append(given[name])


def pages_below(folder):
    found = {}
    for path, _, names in os.walk(folder):
        for name in names:
            if name.endswith('.html') and '_static' not in path:
                with open(os.path.join(path, name), encoding='utf-8') as file:
                    found[os.path.normpath(os.path.join(path, name))] = Page(file.read())
    return found


def broken_links(folder):
    """What is wrong with links, and with the places that they lead to, a line each."""
    pages, faults, count = pages_below(folder), [], 0
    for path, page in sorted(pages.items()):
        shown = os.path.relpath(path, folder)
        faults += ['%s: two places are called %s' % (shown, place) for place in sorted(page.twice)]
        for link in page.links:
            parts = urllib.parse.urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            count += 1
            target = path if not parts.path else os.path.normpath(
                os.path.join(os.path.dirname(path), urllib.parse.unquote(parts.path)))
            if not os.path.exists(target):
                faults.append('%s: %s leads to no file' % (shown, link))
            elif parts.fragment and target in pages and urllib.parse.unquote(parts.fragment) not in pages[target].places:
                faults.append('%s: %s leads to no place' % (shown, link))
    return faults, count, len(pages)


class Browser:
    """A headless one, as wide as is asked, in the light or in the dark."""

    def __init__(self, folder, pictures, width, dark=False):
        from selenium import webdriver
        from selenium.webdriver.chrome.service import Service
        options = webdriver.ChromeOptions()
        for word in ('--headless=new', '--no-sandbox', '--disable-gpu', '--hide-scrollbars', '--allow-file-access-from-files',
                     '--window-size=%d,1000' % max(width, 500)):
            options.add_argument(word)
        self.folder, self.pictures = folder, pictures
        self.driver = webdriver.Chrome(service=Service('/usr/bin/chromedriver'), options=options)
        self.driver.execute_cdp_cmd('Emulation.setDeviceMetricsOverride', {
            'width': width, 'height': 1000, 'deviceScaleFactor': 1, 'mobile': width < 700})
        if dark:
            self.driver.execute_cdp_cmd('Emulation.setEmulatedMedia', {
                'features': [{'name': 'prefers-color-scheme', 'value': 'dark'}]})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.driver.quit()

    def open(self, page):
        self.driver.get('file://' + os.path.join(os.path.abspath(self.folder), page))

    def picture(self, name):
        self.driver.save_screenshot(os.path.join(self.pictures, name + '.png'))

    def ask(self, script):
        return self.driver.execute_script('return ' + script)

    def until(self, script, seconds=60):
        end = time.time() + seconds
        while time.time() < end:
            value = self.ask(script)
            if value:
                return value
            time.sleep(.1)
        return None

    def find(self, words):
        """Names of what the search of the pages finds, best first."""
        from selenium.webdriver.common.by import By
        from selenium.webdriver.common.keys import Keys
        self.open('index.html')
        box = self.driver.find_element(By.CSS_SELECTOR, 'input[name=q]')
        box.send_keys(words + Keys.ENTER)
        return self.until('[...document.querySelectorAll("#found a")].map(each => each.textContent)') or []


IS_SEEN = ('(() => { const place = document.getElementById("%s"), top = place ? place.getBoundingClientRect().top : -1;'
           'return document.readyState === "complete" && top >= 0 && top < window.innerHeight; })()')
TOO_WIDE = ('document.documentElement.scrollWidth > window.innerWidth ? document.title + " is " + '
            'document.documentElement.scrollWidth + " wide" : ""')


def faults_in_browser(folder, pictures):
    faults = []

    def expect(what, found, wanted):
        if found != wanted:
            faults.append('%s: %r, not %r' % (what, found, wanted))

    def overflow(browser, page):
        wide = browser.ask(TOO_WIDE)
        if wide:
            faults.append('%s at %d: %s' % (page, browser.ask('window.innerWidth'), wide))

    with Browser(folder, pictures, 1280) as browser:
        browser.open('index.html')
        browser.picture('first')
        expect('a search', browser.find('age timer')[:2], ['bcm_l2_age_timer_get', 'bcm_l2_age_timer_set'])
        browser.picture('search')
        expect('a search by a comment', 'BCM_L2_STATIC' in browser.find('neither ages nor moves')[:3], True)
        expect('a search by a beginning', browser.find('bcm_l2_addr_add')[:1], ['bcm_l2_addr_add'])
        # The first that was found leads to its place.
        browser.ask('document.querySelector("#found a").click()')
        expect('a found function', browser.until('location.hash'), '#bcm_l2_addr_add')
        browser.until('document.readyState === "complete"')
        expect('the function is on the screen', browser.until(IS_SEEN % 'bcm_l2_addr_add'), True)
        browser.picture('function')
        # From it to its type.
        browser.ask('[...document.querySelectorAll("#bcm_l2_addr_add a")].find(each => each.textContent === '
                    '"bcm_l2_addr_t").click()')
        expect('a type', browser.until('location.hash === "#bcm_l2_addr_t" && location.hash'), '#bcm_l2_addr_t')
        expect('the type is on the screen', browser.until(IS_SEEN % 'bcm_l2_addr_t'), True)
        browser.picture('record')
        for page in ('reference', 'errors', 'registers', 'memories', 'shell', 'guide/scripting', 'guide/architecture',
                     'guide/ten-minutes', 'benchmarks/recorded', 'package', 'reference/field'):
            browser.open(page + '.html')
            browser.picture(page.replace('/', '-'))
            overflow(browser, page)
        browser.open('registers.html')
        expect('bits are drawn', browser.ask('document.querySelectorAll("svg.bits rect.field").length > 300'), True)
    with Browser(folder, pictures, 390) as browser:
        for page in ('index', 'reference', 'reference/l2', 'registers', 'guide/scripting', 'errors', 'shell'):
            browser.open(page + '.html')
            overflow(browser, page)
            browser.picture('telephone-' + page.replace('/', '-'))
        expect('a search on a telephone', browser.find('age timer')[:1], ['bcm_l2_age_timer_get'])
    with Browser(folder, pictures, 1280, dark=True) as browser:
        for page in ('reference/l2', 'registers', 'guide/scripting'):
            browser.open(page + '.html')
            light = browser.ask('getComputedStyle(document.body).backgroundColor')
            expect('the dark is dark', max(map(int, light.strip('rgba()').split(',')[:3])) < 60, True)
            browser.picture('dark-' + page.replace('/', '-'))
        before = browser.ask('document.body.dataset.theme')
        browser.ask('document.querySelector("button.theme-toggle").click()')
        expect('who clicks changes light and dark', browser.ask('document.body.dataset.theme') != before, True)
    return faults


def main(folder, pictures):
    faults, links, pages = broken_links(folder)
    print('%d links of %d pages lead somewhere' % (links, pages) if not faults else '%d links are broken' % len(faults))
    os.makedirs(pictures, exist_ok=True)
    faults += faults_in_browser(folder, pictures)
    print('\n'.join(faults) or 'the browser found what it was asked for; pictures are in ' + pictures)
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
