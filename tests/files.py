"""Files in folders, and tests that have a folder to themselves."""
import os
import shutil
import tempfile
import unittest


def files_of(folder):
    """Paths below it, relative to it: a set."""
    return set(os.path.relpath(os.path.join(path, name), folder)
               for path, _, names in os.walk(folder) for name in names)


class FolderTest(unittest.TestCase):
    """Tests of what their class makes once, in a folder that goes with them, also where making fails."""

    @classmethod
    def setUpClass(cls):
        cls.directory = os.path.realpath(tempfile.mkdtemp())
        try:
            cls.make()
        except BaseException:
            cls.tearDownClass()
            raise

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.directory)

    @classmethod
    def make(cls):
        """What the tests are of."""
        raise NotImplementedError

    @classmethod
    def path(cls, *names):
        return os.path.join(cls.directory, *names)
