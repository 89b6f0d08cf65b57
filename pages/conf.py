"""How Sphinx makes the site and the manual pages of tools/docs, which says by the environment what is to be made."""
import os

project = os.environ['QUOREL_DOCS_PROJECT']
version = release = os.environ['QUOREL_DOCS_VERSION']
here = os.path.dirname(os.path.abspath(__file__))

extensions = ['myst_parser']
source_suffix = {'.rst': 'restructuredtext', '.md': 'markdown'}
myst_heading_anchors = 3
master_doc = 'index'
exclude_patterns = ['examples', 'static']
suppress_warnings = ['myst.header', 'toc.excluded']
highlight_language = 'none'

html_theme = 'furo'
html_title = project
html_static_path = [os.path.join(here, 'static')]
html_css_files = ['reference.css']
html_js_files = ['find.js']
html_extra_path = [path for path in ['find-index.js'] if os.path.exists(path)]
html_copy_source = html_show_sphinx = html_show_copyright = False
html_show_sourcelink = False
html_use_index = False
# The packaged theme has its dark colours for those who choose them, and not for those whose system is dark.
_DARK = {
    'color-problematic': '#ee5151', 'color-foreground-primary': '#ffffffcc', 'color-foreground-secondary': '#9ca0a5',
    'color-foreground-muted': '#81868d', 'color-foreground-border': '#666666', 'color-background-primary': '#131416',
    'color-background-secondary': '#1a1c1e', 'color-background-hover': '#1e2124ff',
    'color-background-hover--transparent': '#1e212400', 'color-background-border': '#303335',
    'color-background-item': '#444', 'color-highlighted-background': '#083563', 'color-highlight-on-target': '#2b2b12',
    'color-admonition-background': '#18181a', 'color-brand-primary': '#7cb9e8', 'color-brand-content': '#7cb9e8',
}
html_theme_options = {
    'light_css_variables': {'color-brand-primary': '#1f5f8b', 'color-brand-content': '#1f5f8b',
                            'color-highlight-on-target': '#fff9d6'},
    'dark_css_variables': _DARK,
}
pygments_style, pygments_dark_style = 'friendly', 'github-dark'

man_make_section_directory = True
man_pages = [(page, name, what, '', section) for page, name, what, section in (
    ('guide/lab', 'quorelapinew-lab', 'hosts in network namespaces at the ports of the simulated switch', 1),
    ('shell', 'quorelapinew-shell', 'commands of the shell of the switch SDK', 7))
    if any(os.path.exists(page + suffix) for suffix in source_suffix)]


def _finish_theme(app, exception):
    """What the theme's package leaves to other packages and to a server: its script imports another, its style sheet one
    of the host's.
    """
    static = os.path.join(app.outdir, '_static')
    if exception or not os.path.isdir(os.path.join(static, 'scripts')):
        return
    for name, leave, before in (('scripts/furo.js', 'import ', 'scripts/gumshoe-patched.js'),
                                ('styles/furo.css', '@import ', None)):
        path = os.path.join(static, name)
        with open(path) as file:
            text = ''.join(line for line in file if not line.startswith(leave))
        if before:
            with open(os.path.join(static, before)) as file:
                text = file.read() + '\n' + text
        with open(path, 'w') as file:
            file.write(text)


def setup(app):
    app.connect('build-finished', _finish_theme)
