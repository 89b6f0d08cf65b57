"""Files in folders."""
import os


def files_of(folder):
    """Paths below it, relative to it: a set."""
    return set(os.path.relpath(os.path.join(path, name), folder)
               for path, _, names in os.walk(folder) for name in names)
