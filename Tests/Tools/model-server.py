#!/usr/bin/env python3
"""Serves one file over loopback, with the failures that downloads can have.

Usage: model-server.py FILE MODE PORT-FILE

MODE is whole, cutting (every reply ends after 1000 bytes), no-ranges (and the first reply is cut), corrupt, missing,
short, redirecting, or stalled (nothing after the first 1000 bytes until the client disconnects). The port is written to
PORT-FILE, one line for each request to standard output.
"""
import http.server
import os
import sys
import threading

path, mode, port_file = sys.argv[1:]
with open(path, "rb") as file:
    content = file.read()
if mode == "corrupt":
    content = content[:-1] + bytes([content[-1] ^ 1])
if mode == "short":
    content = content[:-100]
gone = threading.Event()
requests = 0


class Handler(http.server.BaseHTTPRequestHandler):
    def log_message(self, *arguments):
        pass

    def do_GET(self):
        global requests
        requests += 1
        asked = self.headers.get("Range")
        print(self.path, asked or "all", flush=True)
        if mode == "missing":
            return self.send_error(404)
        if mode == "redirecting" and not self.path.startswith("/elsewhere"):
            self.send_response(302)
            self.send_header("Location", "/elsewhere" + self.path)
            self.end_headers()
            return None
        first = 0
        if asked and mode != "no-ranges":
            first = int(asked.removeprefix("bytes=").removesuffix("-"))
        self.reply(first)

    def reply(self, first):
        if first >= len(content):
            return self.send_error(416)
        self.send_response(206 if first else 200)
        self.send_header("Content-Length", str(len(content) - first))
        if first:
            self.send_header("Content-Range", f"bytes {first}-{len(content) - 1}/{len(content)}")
        self.end_headers()
        is_cut = mode in ("cutting", "stalled") or (mode == "no-ranges" and requests == 1)
        self.wfile.write(content[first : first + 1000] if is_cut else content[first:])
        self.wfile.flush()
        if mode == "stalled":
            gone.wait()
        self.close_connection = True


with http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler) as server:
    with open(port_file + ".new", "w") as file:
        file.write(str(server.server_port))
    os.rename(port_file + ".new", port_file)
    server.serve_forever()
