# How Sphinx renders the manual; scripts/docs runs it. A page is a file here and a line in index.md.
import pathlib
import re

root = pathlib.Path(__file__).resolve().parents[2]
project = "Zebek Suite"
version = re.search(r"^project\(.* VERSION ([0-9.]+) ", (root / "CMakeLists.txt").read_text(), re.M)[1]
release = version

extensions = ["myst_parser"]
source_suffix = {".md": "markdown"}
myst_heading_anchors = 3
nitpicky = True
smartquotes = False  # messages stand as the program shows them

html_theme = "furo"
html_title = f"Zebek Suite {version}"
html_logo = str(root / "src/ui/pictures/icon-128.png")
html_favicon = str(root / "src/ui/pictures/icon-32.png")
html_static_path = ["manual.css", "manual.js"]
html_css_files = ["manual.css"]
html_js_files = ["manual.js"]
# The search is to work on pages that no web server serves, which a script may not load.
html_show_search_summary = False
html_copy_source = False
html_use_index = False
html_show_copyright = False
html_show_sphinx = False


# Those of the theme and of older scripts do nothing here that a page needs: they are left out, and with
# them what browsers refuse on pages from a disk.
SCRIPTS = (
    "documentation_options", "doctools", "language_data", "manual.js", "searchindex", "searchtools", "sphinx_highlight"
)


def keep_needed_scripts(app, page, template, context, doctree):
    context["script_files"] = [file for file in context["script_files"] if any(name in str(file) for name in SCRIPTS)]


def setup(app):
    app.connect("html-page-context", keep_needed_scripts, priority=900)
