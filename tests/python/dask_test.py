"""A cohort on a cluster of two worker processes, one of which is killed on the way."""
import importlib.util
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import dask.dataframe
import hips
import numpy as np
import pandas as pd
import telmarion
from distributed import Client, LocalCluster
from hips import RESULTS

ROWS = 20_000
FILES = 12


def load_example():
    spec = importlib.util.spec_from_file_location("dask_cohort", hips.SOURCE / "examples" / "dask_cohort.py")
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def slowly(frame):
    """Leaves time to kill the worker that has this partition."""
    time.sleep(0.5)
    return frame



class Cluster(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.table = hips.table_of({"hip": np.arange(ROWS), **hips.random_hips(ROWS, seed=6)})
        header, *lines = cls.table.splitlines(keepends=True)
        (cls.folder / "cohort").mkdir()
        for i in range(FILES):
            part = lines[i * ROWS // FILES:(i + 1) * ROWS // FILES]
            (cls.folder / "cohort" / f"part-{i:02}.csv").write_text(header + "".join(part), encoding="ascii")
        cluster = LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None,
                               local_directory=str(cls.folder / "scratch"))
        cls.addClassCleanup(cluster.close)
        cls.client = Client(cluster)
        cls.addClassCleanup(cls.client.close)
        cls.example = load_example()

    def check_same(self, found, rows):
        self.assertEqual(len(found), len(rows))
        np.testing.assert_array_equal(found["hip"], [int(row["hip"]) for row in rows])
        for key in RESULTS:
            np.testing.assert_array_equal(found[key], hips.numbers(rows, key), key)
        np.testing.assert_array_equal(found["status"], [row["status"] for row in rows])

    def test_gives_the_numbers_of_the_program_in_its_order_though_a_worker_is_killed(self):
        workers = self.client.run(os.getpid)
        self.assertEqual(len(workers), 2)
        cohort = self.example.compute(self.folder / "cohort")
        self.assertEqual(cohort.npartitions, FILES)
        future = self.client.compute(cohort.map_partitions(slowly, meta=cohort._meta, enforce_metadata=False))
        time.sleep(1.0)
        self.assertFalse(future.done())
        os.kill(next(iter(workers.values())), signal.SIGKILL)
        found = future.result(timeout=120)
        self.check_same(found, hips.run_program(self.table))
        self.client.wait_for_workers(2, timeout=60)
        self.assertNotEqual(set(self.client.run(os.getpid).values()), set(workers.values()))

    def test_the_example_writes_the_results_of_a_folder(self):
        results = self.folder / "results"
        subprocess.run([sys.executable, hips.SOURCE / "examples" / "dask_cohort.py", self.folder / "cohort", results,
                        self.client.scheduler.address], check=True, timeout=120, capture_output=True)
        parts = [pd.read_csv(part, float_precision="round_trip") for part in sorted(results.glob("*.csv"))]
        self.assertEqual(len(parts), FILES)
        self.check_same(pd.concat(parts), hips.run_program(self.table))

    def test_gives_intervals_that_do_not_depend_on_how_the_rows_are_split(self):
        table = pd.DataFrame({**hips.random_hips(60, seed=8), "thetaCE_u": 2.5, "lizm_u": 0.1})
        options = {"threads": 1, "trials": 1024, "seed": 3}
        whole = telmarion.compute_frame(table, **options)
        self.assertGreater(whole["pmaxWb_hi95"].notna().sum(), 20)
        for partitions in [1, 2, 7]:
            split = dask.dataframe.from_pandas(table, npartitions=partitions)
            found = self.client.compute(split.map_partitions(telmarion.compute_frame, **options, meta=whole.iloc[:0])).result(timeout=120)
            pd.testing.assert_frame_equal(found, whole, check_exact=True)


if __name__ == "__main__":
    unittest.main(argv=[__file__], verbosity=1)
