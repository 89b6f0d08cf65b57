"""The SDK's headers as a reader has them, without a compiler: declarations, what stands above them, and ranges."""
import os
import re

ERROR = re.compile(r'\b(?:BCM|SOC)_(E_[A-Z_]+)')
# A comment, a blank line, a directive, a body in braces, or a declared function.
TOKEN = re.compile(r'/\*(?P<comment>.*?)\*/|(?P<blank>\n[ \t]*\n)|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*'
                   r'|typedef (?:struct|union) \w+ \{(?P<members>.*?)\} (?P<record>\w+);'
                   r'|typedef enum \w+ \{(?P<enumerators>.*?)\} (?P<enumeration>\w+);|\{[^{}]*\}'
                   r'|typedef [\w ]+? (?P<type>\w+);[ ]*/\*(?P<meaning>[^*]*)\*/'
                   r'|(?P<result>(?:[A-Za-z_]\w*[ *\n]+)+)(?P<function>\w+)'
                   r'\((?P<parameters>(?:[^();{}]|\([^()]*\))*)\);', re.S | re.M)
MEMBER = re.compile(r'(\w+)(?:\[[^]]*\])?;[ ]*/\*([^*]*)\*/')


def words(comment):
    return ' '.join(re.sub(r'\n[ \t]*\*', '\n', comment).split())


def numbers(enumerators):
    """What the text between an enumeration's braces says."""
    known, names, last = {}, [], -1
    for each in re.sub(r'/\*.*?\*/', '', enumerators, flags=re.S).split(','):
        name, _, value = [word.strip() for word in each.partition('=')]
        if name:
            last = last + 1 if not value else known.get(value)
            if value and last is None:
                if not re.match('-?(0[xX])?[0-9a-fA-F]+$', value):
                    return []
                last = int(value, 0)
            known[name] = last
            names.append(name)
    # The last may say how many there are, and is none of them.
    if len(names) > 1 and names[-1].endswith('Count') and all(name.startswith(names[-1][:-len('Count')]) for name in names):
        del known[names[-1]]
    return sorted(set(known.values()))


def name_of(parameter):
    """The name that a C declaration gives, or ''."""
    callback = re.search(r'\(\*(\w*)\)', parameter)
    named = callback or re.match(r'(?:const |unsigned |struct )*\w+(?:[ *]|\bconst\b)*\b(\w*)(?:\[[^]]*\])*$', parameter)
    return named.group(1) if named else ''


class Declaration(object):
    """A function: its result as docstrings spell it, parameters and their names ('' where there is none), header, and
    the comments of the header and of the group of declarations in which it stands."""

    def __init__(self, header, head, comment, match):
        self.header, self.head, self.comment, self.name = header, head, comment, match.group('function')
        result = re.sub('^const (\\w+)', r'\1 const', ' '.join(match.group('result').split()))
        self.result = '' if result == 'void' else result
        text = ' '.join(match.group('parameters').split())
        self.parameters = [] if text == 'void' else re.split(r', (?![^(]*\))', text)
        self.names = [name_of(parameter) for parameter in self.parameters]


class Headers(object):
    def __init__(self, folder=os.environ['QUOREL_SDK_INCLUDE']):
        self.functions = {}     # name -> Declaration
        self.members = {}       # (record, member) -> what its comment says
        self.types = {}         # name -> what its comment says
        self.enumerations = {}  # type -> numbers of its enumerators, in order; none where one is worked out of others
        for place, _, files in sorted(os.walk(folder)):
            for name in sorted(files):
                with open(os.path.join(place, name)) as source:
                    text = re.sub(r"#ifdef __cplusplus.*?#endif", "", source.read(), flags=re.S)
                    self.read(os.path.relpath(os.path.join(place, name), folder), text)

    def read(self, header, text):
        head, comment = None, ''
        for match in TOKEN.finditer(text):
            if match.group('comment') is not None:
                comment = words(match.group('comment'))
                head = comment if head is None else head
            elif match.group('function'):
                declared = Declaration(header, head or '', comment if comment is not head else '', match)
                self.functions[declared.name] = declared
            elif match.group('record'):
                for member, said in MEMBER.findall(match.group('members')):
                    self.members[match.group('record'), member] = words(said)
            elif match.group('enumeration'):
                self.enumerations[match.group('enumeration')] = numbers(match.group('enumerators'))
            elif match.group('type'):
                self.types[match.group('type')] = words(match.group('meaning'))
            elif match.group('blank'):
                comment = ''
