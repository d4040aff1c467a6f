"""What must not depend on the number of threads or rows."""
import os
import subprocess
import sys
import unittest

from cohort_program import Case, HEADER, HIP, PROGRAM, replaced, rows, run


class Threads(Case):
    def test_bytes_do_not_depend_on_the_threads(self):
        lines = [f"name,{HEADER}"]
        for i in range(30_000):
            name = f'"row ""{i}"",\nof many"' if i % 7 == 0 else str(i)
            lines.append(f"{name},{replaced(thetaCE=str(i % 170 - 40), bodyWeight=str(i % 90))}")
        table = self.file("hips.csv", "\n".join(lines))
        one = run("--threads", 1, table)
        self.assertEqual(one.returncode, 1)
        self.assertEqual(len(rows(one.stdout)), 30_000)
        for threads in [2, 3, 16]:
            many = run("--threads", threads, table)
            self.assertEqual(many.returncode, 1)
            self.assertEqual(many.stderr, one.stderr)
            self.assertTrue(many.stdout == one.stdout, f"{threads} threads give other bytes")

    def test_more_threads_than_there_can_be_are_as_many_as_there_can_be(self):
        table = self.file("hips.csv", f"{HEADER}\n" + f"{HIP}\n" * 20_000)
        one = run("--threads", 1, table)
        self.check(one, 0)
        for threads in [257, 1_000_000, 10**30]:
            many = run("--threads", threads, table)
            self.check(many, 0)
            self.assertTrue(many.stdout == one.stdout)

    def test_memory_does_not_grow_with_the_rows(self):
        def most_memory(count):
            # In pieces: what Python itself holds when it starts the program counts as the program's.
            table = self.file("hips.csv", f"{HEADER}\n")
            with open(table, "a", encoding="ascii") as file:
                for _ in range(count // 1000):
                    file.write(f"{HIP}\n" * 1000)
            with open(os.devnull, "wb") as nothing:
                program = subprocess.Popen([PROGRAM, "--threads", "2", table], stdout=nothing)
                _, status, usage = os.wait4(program.pid, 0)
                program.returncode = os.waitstatus_to_exitcode(status)
            self.assertEqual(program.returncode, 0)
            return usage.ru_maxrss  # KiB

        # So many that both threads have their share of either, whatever else the machine does.
        few, many = most_memory(200_000), most_memory(400_000)
        self.assertLess(many - few, 4096, f"{few} KiB for few rows, {many} KiB for many")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
