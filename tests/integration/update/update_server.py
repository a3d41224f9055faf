# SPDX-License-Identifier: MIT
"""An update server for tests: real TLS, with an authority of its own.

    update_server.py FOLDER STORY

FOLDER gets what openssl makes; "authority.pem" there is the certificate to trust. STORY is a file of JSON:

    {"host": NAME, "certificate": KIND, "answers": [{"bytes": BASE64, "then": END, "pace": SECONDS}...]}

KIND is "good", "wrong name", "expired" or "stranger" (of an authority that nobody trusts). Each request gets the next
answer, after the last one that again; "@PLAIN_PORT@" in it becomes the number of a port that takes connections without
TLS, and only counts them. END is "close" (in order), "cut" (without the end that TLS has) or "hold" (until the
client goes). With a pace, an answer goes byte by byte.

The first line on the standard output names the ports. When the standard input ends, so does the server, and one more line
tells what it saw: {"requests": [BASE64...], "refusals": [TEXT...], "plain": NUMBER}.
"""
import base64
import json
import os
import select
import socket
import ssl
import subprocess
import sys
import threading
from pathlib import Path

CONFIGURATION = """
[ca]
default_ca = authority
[authority]
database = {folder}/index.txt
serial = {folder}/serial
new_certs_dir = {folder}
default_md = sha256
policy = any
unique_subject = no
[any]
commonName = supplied
[req]
distinguished_name = name
prompt = no
[name]
CN = unused
[root]
basicConstraints = critical, CA:true
keyUsage = critical, keyCertSign
subjectKeyIdentifier = hash
[server]
basicConstraints = critical, CA:false
extendedKeyUsage = serverAuth
subjectAltName = DNS:{name}
"""
SECONDS = 60  # only bounds a failing test


def openssl(*arguments):
    done = subprocess.run(["openssl", *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"openssl {arguments}:\n{done.stdout}")


def make_certificate(folder, host, kind):
    """Makes an authority and a certificate for the server; returns the latter's file, which holds the key too."""
    (folder / "index.txt").touch()
    (folder / "serial").write_text("01\n")
    configuration = folder / "openssl.cnf"
    configuration.write_text(CONFIGURATION.format(folder=folder,
                                                  name="other.example" if kind == "wrong name" else host))
    new_key = ("-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes")
    for name in ("authority", "stranger"):
        openssl("req", "-config", configuration, "-x509", *new_key, "-extensions", "root", "-days", "2",
                "-subj", f"/CN=The {name} of a test", "-keyout", folder / f"{name}.key", "-out", folder / f"{name}.pem")
    openssl("req", "-config", configuration, *new_key, "-subj", "/CN=server", "-keyout", folder / "server.key",
            "-out", folder / "server.csr")
    signer = "stranger" if kind == "stranger" else "authority"
    dates = ("-startdate", "20200101000000Z", "-enddate", "20200201000000Z") if kind == "expired" else ("-days", "1")
    openssl("ca", "-config", configuration, "-batch", "-notext", "-extensions", "server", *dates,
            "-cert", folder / f"{signer}.pem", "-keyfile", folder / f"{signer}.key", "-in", folder / "server.csr",
            "-out", folder / "server.pem")
    with open(folder / "server.pem", "a", encoding="ascii") as file:
        file.write((folder / "server.key").read_text())
    return folder / "server.pem"


def read_request(stream):
    """The bytes of one request, as they came."""
    data = b""
    while b"\r\n\r\n" not in data:
        part = stream.recv(65536)
        if not part:
            return data
        data += part
    head, body = data.split(b"\r\n\r\n", 1)
    length = 0
    for line in head.split(b"\r\n")[1:]:
        name, _, value = line.partition(b":")
        if name.lower() == b"content-length":
            length = int(value)
    while len(body) < length:
        part = stream.recv(65536)
        if not part:
            break
        body += part
    return head + b"\r\n\r\n" + body


class UpdateServer:
    """Serves one connection after the other until `stop`."""

    def __init__(self, folder, story, port=0):
        self.answers = [dict(answer, bytes=base64.b64decode(answer["bytes"])) for answer in story["answers"]]
        self.requests, self.refusals, self.plain = [], [], 0
        self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        self.context.load_cert_chain(make_certificate(folder, story["host"], story["certificate"]))
        self.secure_listener = socket.create_server(("127.0.0.1", port), backlog=16)
        self.plain_listener = socket.create_server(("127.0.0.1", 0), backlog=16)
        self.stop_reader, self.stop_writer = os.pipe()
        self.thread = threading.Thread(target=self.serve)
        self.thread.start()

    def port(self):
        return self.secure_listener.getsockname()[1]

    def plain_port(self):
        return self.plain_listener.getsockname()[1]

    def stop(self):
        """Ends the server once all that came before was looked at; returns what it saw."""
        os.close(self.stop_writer)
        self.thread.join()
        return {"requests": [base64.b64encode(request).decode() for request in self.requests],
                "refusals": self.refusals, "plain": self.plain}

    def serve(self):
        listeners = [self.secure_listener, self.plain_listener]
        while True:
            ready = select.select([*listeners, self.stop_reader], [], [])[0]
            for listener in listeners:
                if listener in ready:
                    connection = listener.accept()[0]
                    if listener is self.plain_listener:
                        self.plain += 1
                        connection.close()
                    else:
                        self.serve_one(connection)
            if ready == [self.stop_reader]:
                return

    def serve_one(self, connection):
        connection.settimeout(SECONDS)
        connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)  # or each exchange waits 40 ms for nothing
        try:
            stream = self.context.wrap_socket(connection, server_side=True)
        except OSError as error:
            self.refusals.append(str(error))
            connection.close()
            return
        try:
            request = read_request(stream)
            if not request:
                stream.close()  # the client looked at the certificate and went
                return
            self.requests.append(request)
            self.answer(stream, self.answers[min(len(self.requests), len(self.answers)) - 1])
        except OSError:
            stream.close()  # the client went away, as several are expected to

    def answer(self, stream, answer):
        data = answer["bytes"].replace(b"@PLAIN_PORT@", str(self.plain_port()).encode())
        pace = answer.get("pace", 0)
        for piece in ([data[i:i + 1] for i in range(len(data))] if pace else [data]):
            stream.sendall(piece)
            if pace and select.select([stream, self.stop_reader], [], [], pace)[0]:
                break  # the client or the test has gone
        if answer.get("then") == "hold":
            select.select([stream, self.stop_reader], [], [], SECONDS)
        elif answer.get("then") != "cut":
            try:
                stream.unwrap()
            except OSError:
                pass  # many clients do not say good-bye
        stream.close()


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    server = UpdateServer(Path(arguments[0]), json.loads(Path(arguments[1]).read_text(encoding="utf-8")))
    print(json.dumps({"port": server.port(), "plainPort": server.plain_port()}), flush=True)
    sys.stdin.read()
    print(json.dumps(server.stop()), flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
