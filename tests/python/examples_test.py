"""The examples in the documentation are true."""
import doctest
import importlib
import inspect
import os
import unittest

import hips
import telmarion

FLAGS = doctest.NORMALIZE_WHITESPACE


def load_tests(_loader, tests, _pattern):
    for name in ["telmarion", "telmarion._frame", "telmarion._hips", "telmarion._results",
                 "telmarion._uncertainty"]:
        module = importlib.import_module(name)
        names = {"telmarion": telmarion, "Status": telmarion.Status}
        tests.addTests(doctest.DocTestSuite(module, extraglobs=names, optionflags=FLAGS))
    os.chdir(hips.SOURCE)  # where the reader of the page stands
    page = hips.SOURCE / "docs" / "python.md"
    tests.addTests(doctest.DocFileSuite(str(page), module_relative=False, optionflags=FLAGS))
    return tests


class Documentation(unittest.TestCase):
    def test_of_each_function_names_every_argument_and_has_an_example(self):
        for function in [telmarion.compute, telmarion.compute_frame, telmarion.uncertainty]:
            text = inspect.getdoc(function)
            for part in ["Parameters", "Returns", "Raises", "Examples"]:
                self.assertIn(f"{part}\n{'-' * len(part)}\n", text, function)
            for argument in inspect.signature(function).parameters:
                self.assertRegex(text, rf"(?m)^(\w+, )*{argument}(, \w+)* : ", function)

    def test_of_each_public_name_is_there(self):
        for name in telmarion.__all__:
            self.assertTrue(name == "__version__" or inspect.getdoc(getattr(telmarion, name)), name)


if __name__ == "__main__":
    unittest.main(argv=[__file__], verbosity=1)
