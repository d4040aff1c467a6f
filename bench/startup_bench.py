"""Time from start to the first paint of the main window, and memory, on an X server without a screen.

Usage, as root for the cold starts: xvfb-run -a /usr/bin/python3 bench/startup_bench.py PROGRAM
"""
import os
import subprocess
import sys
import time

ROUNDS = 5


def painted():
    """True when the X server shows more than one colour."""
    screen = subprocess.run(["import", "-window", "root", "-format", "%k", "info:-"],
                            capture_output=True, check=True)
    return int(screen.stdout) > 10


def memory(process):
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        for line in status:
            if line.startswith("VmRSS"):
                return int(line.split()[1]) / 1024
    return 0.0


def drop_caches():
    subprocess.run(["sync"], check=True)
    with open("/proc/sys/vm/drop_caches", "w", encoding="ascii") as caches:
        caches.write("3")


def look_time():
    """What one look at the screen takes; the paint lies up to this long before it is seen."""
    start = time.monotonic()
    painted()
    return time.monotonic() - start


def start(program):
    begin = time.monotonic()
    environment = dict(os.environ, QT_QPA_PLATFORM="xcb")
    with subprocess.Popen([program], env=environment, stderr=subprocess.DEVNULL) as process:
        while not painted():
            pass
        seconds = time.monotonic() - begin
        mebibytes = memory(process)
        process.kill()
    while painted():
        time.sleep(0.05)
    return seconds, mebibytes


def main():
    program = sys.argv[1]
    look = min(look_time() for _ in range(3))
    print(f"one look at the screen takes {look:.3f} s, contained in the times below")
    for kind in ["cold", "warm"]:
        for _ in range(ROUNDS):
            if kind == "cold":
                drop_caches()
                look_time()  # the looker itself is to be warm
            seconds, mebibytes = start(program)
            print(f"{kind}: first paint seen after {seconds:.3f} s, {mebibytes:.0f} MiB")


if __name__ == "__main__":
    main()
