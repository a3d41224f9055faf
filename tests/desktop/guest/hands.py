# SPDX-License-Identifier: MIT
"""Eyes and hands in the virtual machine.

Reads orders from standard input, a JSON object a line, and answers each with a line "answer JSON". {"run": [PROGRAM, ...]}
is run by root and answered with its status and output; all else goes to person.py, a program in the session of "person".
"""

import json
import pwd
import subprocess
import sys

LEADER = "xfce4-session"


def session_environment(user):
    """What the programs of the session have, as its first one has it."""
    leader = subprocess.run(["pgrep", "--oldest", "--exact", "--euid", str(user), LEADER], check=True, text=True,
                            stdout=subprocess.PIPE).stdout.strip()
    with open(f"/proc/{leader}/environ", encoding="utf-8") as file:
        return dict(entry.split("=", 1) for entry in file.read().split("\0") if "=" in entry)


def begin_person():
    account = pwd.getpwnam("person")
    return subprocess.Popen(["/usr/bin/python3", "-u", "/payload/person.py"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                            text=True, cwd="/", user=account.pw_uid, group=account.pw_gid, extra_groups=[],
                            env=session_environment(account.pw_uid))


def run(arguments):
    done = subprocess.run(arguments, text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          check=False)
    return {"done": {"status": done.returncode, "output": done.stdout}}


def main():
    person = begin_person()
    with open("/proc/sys/kernel/random/boot_id", encoding="ascii") as file:
        print(f"vm: session {file.read().strip()}")
    for line in sys.stdin:
        order = json.loads(line)
        if "run" in order:
            answer = json.dumps(run(order["run"]))
        else:
            person.stdin.write(line)
            person.stdin.flush()
            answer = person.stdout.readline().strip()
        print("answer", answer)


if __name__ == "__main__":
    main()
