"""Results into files, pipes and full disks, and as a table for people."""
import os
import resource
import signal
import stat
import subprocess
import sys
import time
import unittest

from cohort_program import Case, HEADER, HIP, PROGRAM, replaced, rows, run


class Writing(Case):
    def test_output_file(self):
        target = self.path / "out.csv"
        done = run("--output", target, text=f"{HEADER}\n{HIP}\n")
        self.check(done, 0)
        self.assertEqual(done.stdout, b"")
        self.check_known(rows(target.read_bytes())[0])
        self.assertEqual(os.listdir(self.path), ["out.csv"])

    def test_output_over_the_input(self):
        table = self.file("hips.csv", f"{HEADER}\n{HIP}\n")
        self.check(run(table, "-o", table), 0)
        self.check_known(rows(table.read_bytes())[0])

    def test_output_keeps_owner_and_permissions_of_the_file_before(self):
        # Root alone can give a file away.
        groups = os.getgroups() or [os.getegid()]
        owner = (12345, 23456) if os.geteuid() == 0 else (os.geteuid(), groups[-1])
        target = self.file("out.csv", "as it was")
        os.chown(target, *owner)
        target.chmod(0o640)
        self.check(run("-o", target, text=f"{HEADER}\n{HIP}\n"), 0)
        self.check_known(rows(target.read_bytes())[0])
        status = target.stat()
        self.assertEqual((status.st_uid, status.st_gid), owner)
        self.assertEqual(stat.S_IMODE(status.st_mode), 0o640)

    def test_output_appears_whole_or_not_at_all(self):
        target = self.file("out.csv", "as it was")
        table = f"{HEADER}\n{HIP}\n" + '5\'10",\n'
        self.assertEqual(run("-o", target, text=table).returncode, 2)
        self.assertEqual(target.read_text(), "as it was")
        with subprocess.Popen([PROGRAM, "-o", target], stdin=subprocess.PIPE) as program:
            program.stdin.write(f"{HEADER}\n{HIP}\n".encode())
            program.stdin.flush()
            time.sleep(0.2)
            self.assertEqual(target.read_text(), "as it was")
            program.terminate()
            program.wait()
        self.assertEqual(os.listdir(self.path), ["out.csv"])
        self.assertEqual(target.read_text(), "as it was")

    def test_output_folder_that_does_not_exist(self):
        target = self.path / "none" / "out.csv"
        self.check(run("-o", target, text=f"{HEADER}\n{HIP}\n"), 2,
                   f"{target}: cannot be written: No such file or directory")

    def test_output_that_is_a_folder(self):
        done = run("-o", self.path, text=f"{HEADER}\n{HIP}\n")
        self.assertEqual(done.returncode, 2)
        self.assertIn(f"{self.path}: cannot be written: ", done.stderr.decode())

    def test_full_disk(self):
        before = os.stat("/dev/full")
        self.check(run("-o", "/dev/full", text=f"{HEADER}\n{HIP}\n"), 2,
                   "/dev/full: cannot be written: No space left on device")
        after = os.stat("/dev/full")
        self.assertTrue(stat.S_ISCHR(after.st_mode))
        self.assertEqual(before.st_ino, after.st_ino, "the device was replaced")
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PROGRAM], input=f"{HEADER}\n{HIP}\n".encode(), stdout=full,
                                  stderr=subprocess.PIPE, check=False)
        self.check(done, 2, "standard output: cannot be written: No space left on device")

    def test_file_above_the_size_limit(self):
        target = self.path / "out.csv"
        table = f"{HEADER}\n" + f"{HIP}\n" * 5000

        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            # Less than the results need, more than the counters of a coverage build do.
            resource.setrlimit(resource.RLIMIT_FSIZE, (400_000, 400_000))

        done = run("-o", target, text=table, preexec_fn=limit)
        self.check(done, 2, f"{target}: cannot be written: File too large")
        self.assertEqual(os.listdir(self.path), [])

    def test_closed_pipe_ends_quietly(self):
        table = self.file("hips.csv", f"{HEADER}\n" + f"{HIP}\n" * 100_000)
        with subprocess.Popen([PROGRAM, table], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as program:
            program.stdout.readline()
            program.stdout.close()
            self.assertEqual(program.stderr.read(), b"")
            self.assertEqual(program.wait(60), -signal.SIGPIPE)

    def test_table(self):
        table = f"name,{HEADER}\nAnn,{HIP}\nBob,{replaced(thetaCE='-20')}\n"
        done = run("--table", text=table)
        self.check(done, 0)
        self.assertEqual(done.stdout.decode().splitlines(), [
            "name   rWb  thetaR  thetaPol   pmaxWb        pmax  status",
            "----  ----  ------  --------  -------  ----------  " + "-" * 60,
            "Ann   2.81    8.47     16.41  3006.76  2066847.58  ok",
            "Bob   2.81    8.47                                 refused: no stress pole for this "
            "centre-edge angle and force"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
