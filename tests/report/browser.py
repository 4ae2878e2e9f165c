"""Chromium without a window, driven over the DevTools pipe with the standard library alone."""

import base64
import json
import os
import pathlib
import select
import shutil
import subprocess
import tempfile
import time

PATIENCE = 120  # seconds for any one answer: nothing is expected to take long, machines may be busy

FLAGS = [
    "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--disable-extensions", "--disable-default-apps", "--hide-scrollbars", "--mute-audio",
    "--remote-debugging-pipe",
]


def find():
    """The browser's path, or None where there is none."""
    return shutil.which("chromium") or shutil.which("chromium-headless-shell")


class Browser:
    """One page in one browser of its own. Console errors and requests are collected."""

    def __init__(self):
        self.profile = tempfile.mkdtemp(prefix="corvane-browser-")
        to_read, self.to_browser = os.pipe()
        self.from_browser, to_write = os.pipe()

        def give_pipes():
            # Through high numbers, so that neither is overwritten before it is moved.
            read, write = os.dup2(to_read, 93), os.dup2(to_write, 94)
            os.dup2(read, 3)
            os.dup2(write, 4)

        self.process = subprocess.Popen(
            [find(), *FLAGS, f"--user-data-dir={self.profile}", "about:blank"],
            preexec_fn=give_pipes, close_fds=False,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_read)
        os.close(to_write)
        self.buffer = b""
        self.count = 0
        self.events = []
        self.session = None
        targets = self.call("Target.getTargets")["targetInfos"]
        page = next(target for target in targets if target["type"] == "page")
        self.session = self.call("Target.attachToTarget",
                                 targetId=page["targetId"], flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")

    def close(self):
        self.process.kill()
        self.process.wait()
        os.close(self.to_browser)
        os.close(self.from_browser)
        shutil.rmtree(self.profile, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def _read(self, deadline):
        while b"\0" not in self.buffer:
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self.from_browser], [], [], left)[0]:
                raise TimeoutError("the browser does not answer")
            piece = os.read(self.from_browser, 1 << 20)
            if not piece:
                raise EOFError("the browser has ended")
            self.buffer += piece
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, **parameters):
        self.count += 1
        request = {"id": self.count, "method": method, "params": parameters}
        if self.session:
            request["sessionId"] = self.session
        os.write(self.to_browser, json.dumps(request).encode() + b"\0")
        deadline = time.monotonic() + PATIENCE
        while True:
            message = self._read(deadline)
            if message.get("id") == self.count:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']['message']}")
                return message["result"]
            self.events.append(message)

    def traced(self, category, event, work):
        """Does the work; returns the processor seconds of each event of that name meanwhile."""
        session, self.session = self.session, None
        self.call("Tracing.start", transferMode="ReportEvents",
                  traceConfig={"includedCategories": [category]})
        self.session = session
        result = work()
        self.session = None
        self.call("Tracing.end")
        self.wait_for("Tracing.tracingComplete")
        self.session = session
        data = [entry for message in self.events if message.get("method") == "Tracing.dataCollected"
                for entry in message["params"]["value"]]
        return result, [entry["tdur"] / 1e6 for entry in data
                        if entry.get("name") == event and "tdur" in entry]

    def wait_for(self, method):
        """The next event of that name, or one that has come since the events were looked at last."""
        deadline = time.monotonic() + PATIENCE
        while True:
            for event in self.events:
                if event.get("method") == method:
                    self.events.remove(event)
                    return event
            self.events.append(self._read(deadline))

    def open(self, path):
        self.events.clear()
        self.call("Page.navigate", url=pathlib.Path(path).resolve().as_uri())
        self.wait_for("Page.loadEventFired")

    def evaluate(self, expression):
        """The value of an expression of the page's script language; promises are awaited."""
        result = self.call("Runtime.evaluate", expression=expression, awaitPromise=True,
                           returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(json.dumps(result["exceptionDetails"]))
        return result["result"].get("value")

    def resize(self, width, height=900):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=False)

    def media(self, kind="", scheme="light"):
        self.call("Emulation.setEmulatedMedia", media=kind,
                  features=[{"name": "prefers-color-scheme", "value": scheme}])

    def complaints(self):
        """Errors of the console and exceptions since the page was opened."""
        self.evaluate("1")
        return [json.dumps(event["params"]) for event in self.events
                if event["method"] == "Runtime.exceptionThrown"
                or (event["method"] == "Runtime.consoleAPICalled"
                    and event["params"]["type"] in ("error", "assert", "warning"))
                or (event["method"] == "Log.entryAdded"
                    and event["params"]["entry"]["level"] == "error")]

    def requests(self):
        """Addresses that were asked for since the page was opened."""
        return [event["params"]["request"]["url"] for event in self.events
                if event["method"] == "Network.requestWillBeSent"]

    def screenshot(self, path, selector=None):
        clip = {}
        if selector:
            box = self.evaluate(
                f"(() => {{ const e = document.querySelector({json.dumps(selector)});"
                " e.scrollIntoView(); const b = e.getBoundingClientRect();"
                " return [b.x + scrollX, b.y + scrollY, b.width, b.height]; })()")
            clip = {"clip": {"x": box[0], "y": box[1], "width": box[2],
                             "height": min(box[3], 1500), "scale": 1}}
        shot = self.call("Page.captureScreenshot", captureBeyondViewport=bool(selector), **clip)
        pathlib.Path(path).write_bytes(base64.b64decode(shot["data"]))

    def pdf(self):
        """The printed page."""
        printed = self.call("Page.printToPDF", preferCSSPageSize=True, printBackground=True)
        return base64.b64decode(printed["data"])
