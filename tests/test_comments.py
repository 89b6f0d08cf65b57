"""What comments and guides name is there: files, functions, and what guides set in `code`."""
import os
import re
import unittest

SOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
GENERATED = os.path.join(os.environ['QUOREL_BUILD'], 'generated')

CPP = '.h', '.cpp', '.c'
# Literals are passed over, so that no comment begins in one.
CPP_COMMENT = re.compile(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|(//[^\n]*|/\*.*?\*/)', re.S)
OTHER_COMMENT = re.compile(r'(?<!\S)(#[^\n]*)|""".*?"""', re.S)
FILE = re.compile(r'(?:<\w+>|[\w./-])+(?<=[\w>-])\.(?:h|cpp|py|pyi|toml|tsv|cmake|md)\b')
CALL = re.compile(r'\b([A-Za-z_]\w*)\(\)')
# What stands for any name.
ANY = re.compile(r'<\w+>|\b[A-Z]{3,}(?=[./]|\b|_[a-z])|(?<=_)[A-Z]{4,}\b')
# Of systems and other tools, what the generator makes of other headers, and what examples of guides and tests make.
FOREIGN = set('''
    CXXABI_1 GLIBCXX_3 __cxa_thread_atexit gtest_filter record_member _zl
    crypt.h errno.h ethtool.h headers_of_c.h jpeglib.h lzma.h lzma/base.h pyconfig.h sys/time.h vendor.h zlib.h zl.py
    bulb.h lamp.h lamp.toml lamp/level.h probes.h swig_sdk.py
    FOLDER/benchmarks/recorded.md print_both()'''.split())


def sources():
    """(path, text) of what is written by hand, but for history and this."""
    for top in sorted(os.listdir(SOURCES)):
        if top in ('build', 'CHANGELOG.md') or top.startswith('.'):
            continue
        for folder, _, names in os.walk(os.path.join(SOURCES, top)) if os.path.isdir(os.path.join(SOURCES, top)) else [
                (SOURCES, [], [top])]:
            for name in names:
                path = os.path.relpath(os.path.join(folder, name), SOURCES)
                if name != 'test_comments.py':
                    with open(os.path.join(SOURCES, path)) as file:
                        yield path, file.read()


def parted(path, text):
    """The code of a file, and its comments."""
    comments = []

    def take(found):
        if found.group(1) is None and not found.group().startswith('"""'):
            return found.group()
        comments.append(found.group())
        return ' '
    code = (CPP_COMMENT if path.endswith(CPP) else OTHER_COMMENT).sub(take, text)
    return code, comments


class Names(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.files = set(name for _, _, names in os.walk(GENERATED) for name in names)
        cls.files.add('test_comments.py')
        cls.words, cls.comments, cls.guides = set(), [], []
        for path, text in sources():
            parts = path.split(os.sep)
            cls.files.update('/'.join(parts[i:]) for i in range(len(parts)))
            if path.endswith('.md'):
                cls.guides.append((path, text))
                continue
            code, comments = parted(path, text)
            cls.words.update(re.findall(r'[A-Za-z_]\w*', code))
            cls.files.update(re.findall(r'#include <(.*?)>', code))
            cls.comments += [(path, comment) for comment in comments]
        cls.all_words = '\n'.join(cls.words)

    def is_file(self, name):
        name = re.sub(r'^(\.\./)+|^build/(\w+|<\w+>)/(generated/)?|^generated/', '', name)
        if not ANY.search(name):
            return name in self.files or name.rpartition('/')[2] in self.files and '/' not in name
        wanted = re.compile(r'(^|.*/)' + '.+'.join(map(re.escape, ANY.split(name))) + '$')
        return any(wanted.match(file) for file in self.files)

    def is_name(self, name):
        """Whole, or the beginning or end of one."""
        return name in self.words or re.search(r'%s$|^%s' % (name, name), self.all_words, re.M)

    def test_files_and_functions_that_comments_name(self):
        missing = []
        for path, comment in self.comments:
            missing += [(path, name) for name in FILE.findall(comment)
                        if name not in FOREIGN and not self.is_file(name)]
            missing += [(path, name) for name in CALL.findall(comment)
                        if name + '()' not in FOREIGN and not ANY.search(name) and not self.is_name(name)]
        self.assertEqual(missing, [])
        self.assertGreater(len(self.comments), 5000)

    def test_what_guides_set_in_code(self):
        missing, count = [], 0
        for path, text in self.guides:
            text = re.sub(r'(?ms)^```.*?^```$|^    .*?$', '', text)
            for code in re.findall('`([^`\n]+)`', text):
                missing += [(path, name) for name in FILE.findall(code) if name not in FOREIGN and not self.is_file(name)]
                for name in re.findall(r'\b[A-Za-z_]\w*_\w*|\b[a-z]+[A-Z]\w*', FILE.sub('', code)):
                    count += 1
                    if name not in FOREIGN and not ANY.search(name) and not self.is_name(name):
                        missing.append((path, name))
        self.assertEqual(missing, [])
        self.assertGreater(count, 100)


if __name__ == '__main__':
    unittest.main()
