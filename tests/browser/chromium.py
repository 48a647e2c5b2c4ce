"""Chromium for the tests of pages, from Debian's packages: a test without them says so and is skipped."""

import contextlib
import http.server
import pathlib
import sys
import threading
from collections.abc import Iterator

NEEDED = {"/usr/bin/chromedriver": "chromium-driver", "/usr/lib/python3/dist-packages/selenium": "python3-selenium"}
WIDE, NARROW = (1300, 900), (390, 800)


def need(what: str, more: dict[str, str] = {}) -> None:
    """Ends the program unless all packages are there, by a path of each."""
    for path, package in {**NEEDED, **more}.items():
        if not pathlib.Path(path).exists():
            print(f"Skipped: {what}, for {package} of Debian is not installed")
            sys.exit(77)


class Handler(http.server.SimpleHTTPRequestHandler):
    extensions_map = {**http.server.SimpleHTTPRequestHandler.extensions_map, ".js": "text/javascript", ".wasm": "application/wasm"}

    def do_GET(self):
        if self.path == "/favicon.ico":  # which browsers ask for by themselves
            self.send_response(204)
            self.end_headers()
        else:
            super().do_GET()

    def log_message(self, *_):
        pass


@contextlib.contextmanager
def served(handler) -> Iterator[str]:
    """The address of a server."""
    server = http.server.ThreadingHTTPServer(("localhost", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    try:
        yield f"http://localhost:{server.server_port}"
    finally:
        server.shutdown()


@contextlib.contextmanager
def started() -> Iterator:
    """A browser without a window."""
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service

    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    try:
        yield browser
    finally:
        browser.quit()


def screen(browser, size: tuple[int, int], scheme: str) -> None:
    width, height = size
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                            {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": size == NARROW})
    browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [{"name": "prefers-color-scheme", "value": scheme}]})


def complaints(browser, levels: tuple[str, ...] = ("SEVERE", "WARNING")) -> list[str]:
    """What the console says since it was asked last."""
    return [line["message"] for line in browser.get_log("browser") if line["level"] in levels]
