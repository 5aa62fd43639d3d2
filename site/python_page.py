"""The page of the Python package, made of its own doc strings."""

import ast
import re
from pathlib import Path

FOLDER = Path("python/kdx")


def signature(node):
    """A function or a class as its first line says it."""
    if isinstance(node, ast.ClassDef):
        return f"class {node.name}({', '.join(map(ast.unparse, node.bases))})"
    result = f" -> {ast.unparse(node.returns)}" if node.returns else ""
    return f"{node.name}({ast.unparse(node.args)}){result}"


def code(text, kind="python"):
    """A block that shows a text as it is."""
    return f"```{kind}\n{text.rstrip()}\n```\n\n"


def text_of(node):
    """A doc string paragraph by paragraph: sessions and what is indented are code, and in the rest
    nothing is a mark of doxygen's."""
    paragraphs = (ast.get_docstring(node) or "").split("\n\n")
    return "".join(code(paragraph) if paragraph.startswith((">>>", "    "))
                   else re.sub(r"([\\@#<>])", r"\\\1", paragraph) + "\n\n"
                   for paragraph in paragraphs)


def is_public_method(member):
    """Whether users call it by its name, and are told what it does."""
    return (isinstance(member, ast.FunctionDef) and not member.name.startswith("_")
            and ast.get_docstring(member))


def described(node):
    """A definition, its description, and the methods of a class with theirs."""
    methods = filter(is_public_method, node.body) if isinstance(node, ast.ClassDef) else []
    return code(signature(node)) + text_of(node) + "".join(map(described, methods))


def python_page():
    """All that the package exports, under the names that it exports."""
    package = ast.parse((FOLDER / "__init__.py").read_text("utf-8"))
    exported = {alias.name for node in package.body if isinstance(node, ast.ImportFrom)
                for alias in node.names}
    definitions = {node.name: node for file in sorted(FOLDER.glob("*.py"))
                   for node in ast.parse(file.read_text("utf-8")).body
                   if isinstance(node, (ast.FunctionDef, ast.ClassDef)) and node.name in exported}
    return f"# Python {{#python}}\n\n{text_of(package)}" + "".join(
        f"## {name} {{#python-{name}}}\n\n{described(node)}"
        for name, node in sorted(definitions.items()))
