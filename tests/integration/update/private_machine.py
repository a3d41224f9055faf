# SPDX-License-Identifier: MIT
"""Runs a program on a machine of its own, as far as the network goes, where the update server lives.

    private_machine.py FOLDER SETUP COMMAND [ARGUMENT...]

Expects to be started in a mount and a network namespace of its own. SETUP is a file of JSON: what update_server.py takes,
and "network" (whether the machine has any), "hosts" (the content of /etc/hosts), "served" (whether the server runs, on port
443). The server's authority is the only one that the machine trusts.

Prints one line: {"status": NUMBER, "output": BASE64, "errors": BASE64, "requests": [BASE64...]}.
"""
import base64
import json
import os
import subprocess
import sys
from pathlib import Path

from update_server import UpdateServer

AUTHORITIES = "/etc/ssl/certs/ca-certificates.crt"


def run(*command):
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL)


def replace(path, content, folder):
    file = folder / Path(path).name
    file.write_text(content, encoding="utf-8")
    file.chmod(0o644)
    run("mount", "--bind", str(file), os.path.realpath(path))


def main(arguments):
    folder, setup, command = Path(arguments[0]), json.loads(Path(arguments[1]).read_text(encoding="utf-8")), arguments[2:]
    if setup["network"]:
        run("ip", "link", "set", "lo", "up")
    replace("/etc/hosts", setup["hosts"], folder)
    replace("/etc/nsswitch.conf", "hosts: files\npasswd: files\ngroup: files\n", folder)
    server = UpdateServer(folder, setup, 443) if setup["served"] else None
    if server:
        replace(AUTHORITIES, (folder / "authority.pem").read_text(), folder)
    environment = {name: value for name, value in os.environ.items() if not name.lower().endswith("_proxy")}
    done = subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, capture_output=True, check=False)
    seen = server.stop() if server else {"requests": []}
    print(json.dumps({"status": done.returncode, "output": base64.b64encode(done.stdout).decode(),
                      "errors": base64.b64encode(done.stderr).decode(), "requests": seen["requests"]}))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
