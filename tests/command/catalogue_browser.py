#!/usr/bin/env python3
"""Uses the pages of `zeb5xml catalogue` in headless Chromium as a reader does: loads, searches, filters, follows links.

    tests/command/catalogue_browser.py COMMAND EXAMPLES FOLDER

COMMAND is the built zeb5xml, EXAMPLES the folder of example documents. Pages and pictures of them go to FOLDER. Prints
what was measured; the exit status is 1 when something is not as it should be.
"""

import base64
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

CHANNELS = 20_000
MOST_MILLISECONDS = {"load": 5000, "search": 250, "filter": 250, "sort": 700, "scroll": 100}
HOSTILE = '</script><!--<img src=x onerror="document.title=1">'  # as long as a description may be


class Browser:
    """Chromium, asked over its pipe: each message is JSON that ends with a NUL."""

    def __init__(self, profile):
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()

        def place_pipes():
            ends = os.dup(to_browser), os.dup(from_browser)
            os.dup2(ends[0], 3)
            os.dup2(ends[1], 4)

        self._process = subprocess.Popen(
            ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--hide-scrollbars",
             "--remote-debugging-pipe", f"--user-data-dir={profile}", "about:blank"],
            preexec_fn=place_pipes, close_fds=False, stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self._rest = b""
        self._last = 0
        self._session = None
        self.requests = []
        self.complaints = []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Network", "Log"):
            self.call(domain + ".enable")

    def _message(self):
        while b"\0" not in self._rest:
            block = os.read(self._in, 1 << 16)
            if not block:
                raise RuntimeError("the browser ended")
            self._rest += block
        text, self._rest = self._rest.split(b"\0", 1)
        return json.loads(text)

    def call(self, method, **parameters):
        self._last += 1
        message = {"id": self._last, "method": method, "params": parameters}
        if self._session:
            message["sessionId"] = self._session
        os.write(self._out, json.dumps(message).encode() + b"\0")
        while True:
            answer = self._message()
            if answer.get("id") == self._last:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]
            self._note(answer)

    def _note(self, event):
        if event.get("method") == "Network.requestWillBeSent":
            self.requests.append(event["params"]["request"]["url"])
        elif event.get("method") == "Runtime.exceptionThrown":
            self.complaints.append(event["params"]["exceptionDetails"])
        elif event.get("method") == "Log.entryAdded":
            self.complaints.append(event["params"]["entry"])

    def value(self, expression):
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise RuntimeError(f"{expression}: {answer['exceptionDetails']}")
        return answer["result"].get("value")

    def load(self, path):
        begin = time.monotonic()
        self.call("Page.navigate", url=path.resolve().as_uri())
        while self.value("document.documentElement?.dataset.ready || ''") != "true":
            if time.monotonic() - begin > 60:
                raise RuntimeError(f"{path} does not become ready: {self.complaints}")
            time.sleep(0.02)
        self.settle()
        return 1000 * (time.monotonic() - begin)

    def settle(self):
        """Waits until what was changed is drawn."""
        self.value("new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(() => done(1))))")

    def milliseconds(self, code):
        """Time from the begin of the code until the page is drawn again."""
        return self.value("new Promise((done) => { const begin = performance.now(); " + code +
                          "; requestAnimationFrame(() => setTimeout(() => done(performance.now() - begin))); })")

    def press(self, key, code=0, text=""):
        for kind in ("keyDown", "keyUp"):
            parts = {"type": kind, "key": key, "windowsVirtualKeyCode": code}
            if text and kind == "keyDown":
                parts["text"] = text
            self.call("Input.dispatchKeyEvent", **parts)
        self.settle()

    def type(self, text):
        self.call("Input.insertText", text=text)
        self.settle()

    def show_as(self, width, height, scheme="light"):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        self.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.settle()

    def picture(self, path):
        self.settle()
        path.write_bytes(base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"]))

    def close(self):
        self._session = None
        self.call("Browser.close")
        self._process.wait(20)


class Checks:
    def __init__(self):
        self.faults = 0

    def equal(self, what, found, expected):
        if found != expected:
            self.faults += 1
            print(f"FAILED: {what}: {found!r} is not {expected!r}")

    def fast(self, what, milliseconds):
        print(f"{what}: {milliseconds:.0f} ms")
        if milliseconds > MOST_MILLISECONDS[what]:
            self.faults += 1
            print(f"FAILED: {what} takes longer than {MOST_MILLISECONDS[what]} ms")


def many_channels():
    event, kinds = (2, 16, 48, 1026, 64, 7168), ("MAGNETS", "DIAG", "RF", "VACUUM", "LASER", "TIMING")
    text = ['<?xml version="1.0" encoding="ISO-8859-1" ?>\n<CHANDESCRIPTIONS>\n']
    for n in range(CHANNELS):
        text.append(f"<CHANNEL><STREAM>{n % 7}</STREAM><EVTYPE>{event[n % 6]}</EVTYPE><DTYPE>8</DTYPE>"
                    f"<SB_NAME>SRV{n % 40}</SB_NAME><PROP>LARKMOOR.{kinds[n % 6]}/DEVICE{n % 900}/PART{n}/VALUE</PROP>"
                    f"<NAME>CH{n}.VALUE</NAME>"
                    f"<SUBSYSTEM>{kinds[n % 6]}</SUBSYSTEM><UNITS>mm</UNITS><DESC>value of part {n}</DESC>"
                    f"<SIZE>{1 + n * n % 4096}</SIZE></CHANNEL>\n")
    return "".join(text) + "</CHANDESCRIPTIONS>\n"


COUNT = "document.getElementById('count').textContent"
TITLE = "document.querySelector('#details h2')?.textContent ?? ''"
IS_OPEN = "!document.getElementById('details').hidden"
FIRST = "document.querySelector('.rows .row > div')?.textContent"
SEARCH = "{ const box = document.getElementById('search'); box.value = '%s'; box.dispatchEvent(new Event('input')) }"
CHOOSE = "{ const list = document.getElementById('filter-%s'); list.value = '=%s';" \
         " list.dispatchEvent(new Event('change')) }"


def go(browser, place):
    browser.value(f"location.hash = '{place}'; 1")
    browser.settle()
    time.sleep(0.05)


def use_examples(browser, checks, page, folder):
    browser.show_as(1280, 800)
    browser.load(page)
    checks.equal("all channels are there", browser.value(COUNT), "200 records")
    checks.equal("a row for each of the columns",
                 browser.value("document.querySelectorAll('.rows .row').length > 10"), True)
    browser.press("/", 191, "/")
    browser.type("quad q07")
    checks.equal("words are searched", browser.value(COUNT), "2 of 200 records")
    browser.press("Enter", 13)
    checks.equal("Enter opens the first", browser.value(TITLE), "Q07.CURRENT")
    browser.press("ArrowDown", 40)
    checks.equal("details follow the arrows", browser.value(TITLE), "Q07.SP")
    browser.press("Escape", 27)
    checks.equal("Escape closes", browser.value(IS_OPEN), False)
    browser.value("document.querySelector('.filters button').click()")
    browser.value(CHOOSE % ("event", "TOROID_ML"))
    checks.equal("an event type is chosen", browser.value(COUNT), "8 of 200 records")
    go(browser, "#events")
    browser.value("[...document.querySelectorAll('.names a')].find((one) => one.textContent === 'BPM01.Y').click()")
    time.sleep(0.1)
    checks.equal("a name leads to its channel", browser.value(TITLE), "BPM01.Y")
    checks.equal("which leads back",
                 browser.value("document.querySelector('#details section a').textContent"), "event list, NORMAL")
    browser.value("document.querySelector('#details section a').click()")
    time.sleep(0.1)
    checks.equal("to its event", browser.value("document.activeElement.querySelector('h3').textContent"), "NORMAL")
    go(browser, "#dictionaries")
    browser.value("document.querySelectorAll('.rows a')[1].click()")
    time.sleep(0.1)
    checks.equal("an entry leads to its channel", browser.value(TITLE), "A02.SP.AMPL")
    browser.value("document.querySelector('#details section a').click()")
    time.sleep(0.1)
    checks.equal("and back to its row",
                 browser.value("document.querySelector('[aria-selected=true] > div').textContent"), "2")
    go(browser, "#channels")
    checks.equal("and shows all again", browser.value(COUNT), "200 records")
    go(browser, "#overview")
    browser.value("document.querySelector('.heat td a').click()")
    time.sleep(0.1)
    checks.equal("a cell of the map leads to its channels", browser.value(COUNT + ".includes(' of 200 records')"), True)
    checks.equal("nothing is loaded",
                 [url for url in browser.requests if not url.startswith(("file:", "data:", "about:"))], [])
    checks.equal("nothing complains", browser.complaints, [])
    take_pictures(browser, checks, folder)


def take_pictures(browser, checks, folder):
    go(browser, "#channels")
    browser.value("document.querySelector('.filters button').click()")
    for name, width, scheme in (("light", 1280, "light"), ("dark", 1280, "dark"), ("narrow", 390, "light")):
        browser.show_as(width, 800, scheme)
        for view in ("channels", "channels/0", "overview", "events", "dictionaries", "cameras"):
            go(browser, "#" + view)
            browser.picture(folder / f"{name}-{view.replace('/', '-')}.png")
    browser.show_as(1280, 640)
    go(browser, "#channels")
    browser.value(SEARCH % "rf")
    go(browser, "#channels/" + str(browser.value("channels.findIndex((one) => one.daq_name === 'C01.INTERLOCK')")))
    checks.equal("the row of the details can be seen", browser.value(
        "(() => { const row = document.querySelector('[aria-selected=true]').getBoundingClientRect(),"
        " all = document.querySelector('.scroller').getBoundingClientRect();"
        " return row.top >= all.top && row.bottom <= all.bottom + 1; })()"), True)
    browser.picture(folder / "readme.png")  # docs/catalogue.png


def use_hostile(browser, checks, page):
    browser.load(page)
    text = json.dumps(HOSTILE)
    checks.equal("markup is text",
                 browser.value("[...document.querySelectorAll('.rows [role=gridcell]')]"
                               f".some((one) => one.textContent === {text})"), True)
    go(browser, "#channels/0")
    checks.equal("also in the details",
                 browser.value(f"document.querySelector('#details .lead').textContent === {text}"), True)
    go(browser, "#events")
    checks.equal("unknown names are marked",
                 browser.value("document.querySelector('.names .lost').textContent"), "⚠ NOBODY (not described)")
    go(browser, "#overview")
    checks.equal("no markup came to life",
                 browser.value("document.images.length + ' ' + document.title"), "0 <b>Title</b>")
    checks.equal("nothing complains", browser.complaints, [])


def use_events_alone(browser, checks, page):
    browser.load(page)
    checks.equal("views are those that have records",
                 browser.value("[...document.querySelectorAll('nav a')].map((one) => one.textContent)"),
                 ["Overview", "Events 1"])
    go(browser, "#events")
    checks.equal("without channels, no name is marked", browser.value("document.querySelectorAll('.lost').length"), 0)
    checks.equal("nothing complains", browser.complaints, [])


def use_many(browser, checks, page):
    browser.show_as(1280, 800)
    checks.fast("load", browser.load(page))
    checks.equal("only what can be seen is drawn",
                 browser.value("document.querySelectorAll('.rows .row').length < 60"), True)
    for letters in ("p", "pa", "part77"):
        checks.fast("search", browser.milliseconds(SEARCH % letters))
    checks.equal("found", browser.value(COUNT), "111 of 20,000 records")
    browser.value("document.querySelector('.filters button').click()")
    checks.fast("filter", browser.milliseconds(CHOOSE % ("subsystem", "RF")))
    checks.equal("filtered", browser.value(COUNT), "3,333 of 20,000 records")
    browser.value("document.querySelector('.filters button').click()")
    checks.fast("sort", browser.milliseconds("document.querySelectorAll('.head button')[1].click()"))
    checks.equal("sorted as people expect",
                 browser.value("document.querySelectorAll('.rows .row')[2].children[1].textContent"), "CH2.VALUE")
    checks.fast("scroll", browser.milliseconds("document.querySelector('.scroller').scrollTop = 300000"))
    checks.equal("scrolled",
                 browser.value("document.querySelectorAll('.rows .row')[8].children[1].textContent"), "CH10003.VALUE")
    checks.equal("nothing complains", browser.complaints, [])


def write_page(command, documents, page, *options):
    subprocess.run([command, "catalogue", *documents, "-o", page, *options], check=True)


def main():
    command, examples, folder = map(pathlib.Path, sys.argv[1:])
    folder.mkdir(parents=True, exist_ok=True)
    names = ["channels.xml", "events.xml", "envindexdict.xml", "camera.xml"]
    subprocess.run([command.resolve(), "catalogue", *names, "-o", (folder / "examples.html").resolve()], check=True, cwd=examples)
    text = f"<![CDATA[{HOSTILE}]]>"
    (folder / "hostile.xml").write_text(
        f"<CHANDESCRIPTIONS><CHANNEL><PROP>{text}</PROP><DESC>{text}</DESC></CHANNEL></CHANDESCRIPTIONS>")
    (folder / "lost.xml").write_text(
        "<BMR><EVENT><TYPE>1</TYPE><SBLOCK>S</SBLOCK><CHLIST><CHAN>NOBODY</CHAN></CHLIST></EVENT></BMR>")
    documents = [folder / "hostile.xml", folder / "lost.xml"]
    write_page(command, documents, folder / "hostile.html", "--title", "<b>Title</b>")
    write_page(command, [folder / "lost.xml"], folder / "events.html")
    (folder / "many.xml").write_text(many_channels())
    write_page(command, [folder / "many.xml"], folder / "many.html")
    checks = Checks()
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        browser = Browser(profile)
        try:
            use_examples(browser, checks, folder / "examples.html", folder)
            use_hostile(browser, checks, folder / "hostile.html")
            use_events_alone(browser, checks, folder / "events.html")
            use_many(browser, checks, folder / "many.html")
        finally:
            browser.close()
    print(f"{checks.faults} faults" if checks.faults else "ok")
    return bool(checks.faults)


if __name__ == "__main__":
    sys.exit(main())
