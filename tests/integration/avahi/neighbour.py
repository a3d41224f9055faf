# SPDX-License-Identifier: MIT
"""Another host on the network, which speaks multicast DNS with an implementation of its own (python3-zeroconf).

    neighbour.py INTERFACE ADDRESS

Waits for the interface, gives it the address and obeys lines of JSON, each of which it answers with one:
    {"do": "publish", "name", "type", "port", "txt": HEX, "addresses": [TEXT...]}
    {"do": "update", "txt": HEX}        another TXT record for what it published
    {"do": "withdraw"}
    {"do": "resolve", "name", "type", "patience": MILLISECONDS}
                                        what it is answered: {"port", "addresses", "txt": HEX}, or null
"""
import json
import socket
import subprocess
import sys
import time

from zeroconf import IPVersion, ServiceInfo, Zeroconf

INTERFACE, ADDRESS = sys.argv[1:3]


def ip(*arguments):
    return subprocess.run(("ip", *arguments), check=False, stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL).returncode


deadline = time.monotonic() + 20
while ip("link", "show", INTERFACE) != 0:
    if time.monotonic() > deadline:
        sys.exit("the interface did not come")
    time.sleep(0.02)
ip("link", "set", "lo", "up")
ip("addr", "add", ADDRESS + "/24", "dev", INTERFACE)
ip("link", "set", INTERFACE, "up")
network = Zeroconf(interfaces=[ADDRESS], ip_version=IPVersion.V4Only)
published = None


def packed(address):
    return socket.inet_pton(socket.AF_INET6 if ":" in address else socket.AF_INET, address)


def obey(order):
    global published
    if order["do"] in ("publish", "update"):
        if order["do"] == "publish":
            kind = order["type"] + ".local."
            published = {"type_": kind, "name": order["name"] + "." + kind, "port": order["port"],
                         "server": "neighbour.local.", "addresses": [packed(text) for text in order["addresses"]]}
        info = ServiceInfo(properties=bytes.fromhex(order["txt"]), **published)
        (network.register_service if order["do"] == "publish" else network.update_service)(info)
        return True
    if order["do"] == "withdraw":
        network.unregister_all_services()
        return True
    kind = order["type"] + ".local."
    with Zeroconf(interfaces=[ADDRESS], ip_version=IPVersion.V4Only) as asking:  # which remembers nothing
        info = asking.get_service_info(kind, order["name"] + "." + kind, timeout=order["patience"])
    return info and {"port": info.port, "addresses": info.parsed_addresses(), "txt": info.text.hex()}


print(json.dumps("ready"), flush=True)
for line in sys.stdin:
    print(json.dumps(obey(json.loads(line))), flush=True)
network.close()
