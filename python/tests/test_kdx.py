"""The package as its users have it. KDX_TOOL names the tool, which answers the same questions."""

import io
import json
import mmap
import os
import pickle
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor

import kdx
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

settings.register_profile("kdx", deadline=None, database=None, derandomize=True)
settings.load_profile("kdx")

TEXT = "Sample: s1\n  Volume = 2.5 [ml]\n  Channel: A # first\n    Gain = 10\n  END\nEND\n"
FLAT = {"/Sample:s1": {"Volume": "2.5 [ml]"}, "/Sample:s1/Channel:A": {"Gain": "10"}}
ODD = b"\xef\xbb\xbfSample: s1\n  x = \xc3\xa4\xff\\\n\nEND"

LINES = st.sampled_from(
    ["A:", "A: b", "B: b/c", ":", "x = 1", " x=2 # c", "\u00e4 = 1", "y = C:\\ #", "x = a\\", "END"]
    + ["end", "> run", "! as is", "", "# kdx: ignore all", "x -> 1", "\\", "A: A", "x = \u20ac"]
)
TEXTS = st.lists(LINES, max_size=12).map("\n".join)
WORDS = st.text("ab \\#=:\n\udcff\u00e4[]/", max_size=5)


def tool(*arguments, text):
    """What the tool prints; nothing where it refuses the text."""
    command = [os.environ["KDX_TOOL"], *arguments]
    return subprocess.run(command, input=text, stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def buffers(text):
    yield from (text, bytearray(text), memoryview(text), memoryview(b"." + text)[1:])
    with tempfile.TemporaryFile() as file:
        file.write(text)
        file.flush()
        yield mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)


class TestForms:
    def test_all_kinds_of_text_are_the_same(self):
        for text in buffers(ODD):
            assert kdx.loads(text) == kdx.loads(ODD.decode("utf-8", "surrogateescape")), text
            assert b"".join(map(bytes_of, kdx.iter_events(text))) == ODD[3:], text
            assert bytes(kdx.Document(text)) == ODD, text

    def test_what_has_the_form_of_the_text(self):
        for text in (TEXT, TEXT.encode()):
            for result in (kdx.format(text), kdx.find(text, "A"), kdx.split_actions(text)[0][1]):
                assert type(result) is type(text)

    @pytest.mark.parametrize("call", [kdx.loads, kdx.check, kdx.format, kdx.Document])
    def test_what_is_no_text(self, call):
        with pytest.raises(TypeError, match="this is of type int"):
            call(1)
        with pytest.raises(ValueError):
            call("\ud800")

    def test_files(self, tmp_path):
        for mode in ("", "b"):
            with open(tmp_path / "a.kdx", "w" + mode) as file:
                kdx.dump(FLAT, file)
            with open(tmp_path / "a.kdx", "r" + mode) as file:
                assert kdx.load(file) == FLAT
            with open(tmp_path / "a.kdx", "r" + mode) as file:
                assert next(kdx.iter_events(file)).second == "s1"


def bytes_of(statement):
    return statement.source.encode("utf-8", "surrogateescape")


class TestRoundTrips:
    @given(st.dictionaries(st.sampled_from(["/A", "/A:b"]) | WORDS, st.dictionaries(WORDS, WORDS)))
    def test_what_is_written_is_read(self, flat):
        try:
            text = kdx.dumps(flat)
        except kdx.KDXEncodeError:
            return
        assert {path: kdx.loads(text)[path] for path in flat} == flat

    @given(TEXTS)
    def test_nested(self, text):
        try:
            tree = kdx.loads(text, nested=True)
        except kdx.KDXDecodeError:
            return
        assert kdx.loads(kdx.dumps(tree), nested=True) == tree
        assert pickle.loads(pickle.dumps(tree)) == tree

    def test_layout(self):
        tree = kdx.loads(TEXT, nested=True)
        compact = "Sample:s1\nVolume=2.5 [ml]\nChannel:A\nGain=10\nEND\nEND\n"
        for obj in (FLAT, tree):
            assert kdx.dumps(obj, indent=0, spaced=False, end_comments=False) == compact
        assert tree["/Sample:s1"].parameters == {"Volume": "2.5 [ml]"}
        assert list(tree["/Sample:s1"].objects) == ["/Channel:A"]

    def test_depth(self):
        text = "A:\n" * 50000
        assert kdx.dumps(kdx.loads(text, nested=True)).count("END") == 50000
        assert len(kdx.check(text, warnings=False)) == 0


class TestTheToolsAnswer:
    @settings(max_examples=80)
    @given(TEXTS, st.sampled_from([("map", kdx.loads), ("fmt", kdx.format)]))
    def test_results(self, text, way):
        command, call = way
        answer = tool(command, text=text.encode())
        try:
            result = call(text)
        except kdx.KDXError:
            assert answer.returncode != 0
            return
        assert answer.returncode == 0
        assert result == (json.loads if command == "map" else bytes.decode)(answer.stdout)

    @settings(max_examples=40)
    @given(TEXTS)
    def test_check(self, text):
        answer = tool("check", "--json", text=text.encode())
        lines = (answer.stdout + answer.stderr).splitlines()
        found = [json.loads(line) for line in lines]
        mine = kdx.check(text.encode())
        assert [(f["line"], f["column"], f["rule"]) for f in found] == [
            (p.lineno, p.colno, p.rule) for p in mine
        ]


class TestErrors:
    @pytest.mark.parametrize("prefix", ["", "\ufeff", "# \u00e4\u20ac\udcff\n"])
    @pytest.mark.parametrize("line", ["x -> 1", "\u00e4 -> 1", "END", "x = 1"])
    def test_where_a_text_fails(self, prefix, line):
        for text in (prefix + line, (prefix + line).encode("utf-8", "surrogateescape")):
            with pytest.raises(kdx.KDXDecodeError) as caught:
                kdx.loads(text)
            error = pickle.loads(pickle.dumps(caught.value))
            assert vars(error) == vars(caught.value) and str(error) == str(caught.value)
            start = text.rfind("\n" if isinstance(text, str) else b"\n") + 1
            mark = text[:0] if prefix != "\ufeff" else text[: 3 if text[:3] == ODD[:3] else 1]
            assert error.doc == text and error.lineno == prefix.count("\n") + 1
            assert error.colno == error.pos - max(start, len(mark)) + 1

    def test_buffers_that_fail(self):
        for text in buffers(b"x -> 1"):
            with pytest.raises(kdx.KDXDecodeError) as caught:
                kdx.loads(text)
            assert caught.value.doc is text
            assert pickle.loads(pickle.dumps(caught.value)).doc == b"x -> 1"
        text.close()
        assert pickle.loads(pickle.dumps(caught.value)).pos == caught.value.pos

    @pytest.mark.parametrize(
        "flat, message",
        [
            ({"/A": {"x": " 1"}}, "/A, x: .*blank"),
            ({"/A:A": {}}, "/A:A: no text"),
            ({"/A": {"x\n": "1"}}, "/A, x\n: "),
            ({"/A\nEND": {}}, "no text has an object with this path"),
            ({"/A": {"x": "1 # 2"}}, "/A, x: .*#"),
        ],
    )
    def test_what_no_text_carries(self, flat, message):
        with pytest.raises(kdx.KDXEncodeError, match=message):
            kdx.dumps(flat)

    def test_trees_that_no_text_carries(self):
        inside_itself = kdx.Object("A")
        inside_itself["/A"] = inside_itself
        objects = (kdx.Object("A\n", "b"), kdx.Object("B"), inside_itself)
        for name, value in (("x", "1"), *(("/A", value) for value in objects)):
            tree = kdx.Object()
            tree[name] = value
            with pytest.raises(kdx.KDXEncodeError):
                kdx.dumps(tree)

    def test_the_others(self):
        with pytest.raises(kdx.KDXInvalidError, match="rule"):
            kdx.check("", rules=["no-such-rule"])
        with pytest.raises(TypeError):
            kdx.dumps({"/A": {"x": 1}})
        builder = kdx.Builder("/A")
        with pytest.raises(kdx.KDXUsageError):
            builder.text
        for whole in (builder, kdx.ActionBuilder("go"), kdx.iter_events("")):
            with pytest.raises(TypeError, match="cannot pickle"):
                pickle.dumps(whole, 0)


class TestDocument:
    def test_edits(self):
        document = kdx.Document(TEXT.encode() + ODD[3:])
        document["/Sample:s1/Channel:A"]["Gain"] = "11"
        assert document["/Sample:s1"]["x"] == "\u00e4\udcff"
        del document["/Sample:s1"]["x"]
        document["/New/Inner:i"] = {}
        document["/Sample:s1/Channel:A"].update(Rate="C:\\")
        assert bytes(document).startswith(TEXT.replace("10\n", "11\n    Rate = C:\\ #\n").encode())
        assert list(document)[-2:] == ["/New", "/New/Inner:i"] and len(document) == 4
        again = pickle.loads(pickle.dumps(document))
        assert again == document
        assert kdx.loads(again.text) == {path: dict(document[path]) for path in document}
        assert kdx.loads(kdx.dumps(document)) == kdx.loads(again.text)
        del again["/Sample:s1"]
        assert list(again) == ["/New", "/New/Inner:i"] and "/Sample:s1" in document

    def test_refusals_change_nothing(self):
        document = kdx.Document(TEXT)
        paths = ("/New:n\n", "/New/In\n", "New", "/New:New", "")
        for path, value in (*((path, "1") for path in paths), ("/Sample:s1/Channel:A", "\n")):
            with pytest.raises(kdx.KDXInvalidError):
                document[path] = {"New": "1", "Gain": value}
        assert document.text == TEXT and "/New" not in document
        for missing in ("/Sample", 1, "/New"):
            with pytest.raises(KeyError):
                del document[missing]

    def test_comments(self):
        section = kdx.Document(TEXT)["/Sample:s1/Channel:A"]
        assert (section.comment, section.type, section.name) == ("# first", "Channel", "A")
        section.comments["Gain"] = "dB"
        assert dict(section.comments) == {"Gain": "# dB"}
        del section.comments["Gain"]
        assert len(section.comments) == 0

    def test_problems(self):
        assert [p.rule for p in kdx.Document("END").problems] == [kdx.check("END")[0].rule]

    @given(TEXTS)
    def test_any_text_is_shown(self, text):
        page = kdx.Document(text + "\n# <script>&\udcff")._repr_html_()
        assert "<script" not in page and "&lt;script&gt;&amp;\ufffd" in page and page.encode()


def test_threads_work_on_texts_of_their_own():
    texts = [TEXT.replace("s1", f"s{i}") * 100 for i in range(64)]
    with ThreadPoolExecutor(8) as pool:
        for call in (kdx.loads, kdx.check, kdx.format):
            assert list(pool.map(call, texts)) == list(map(call, texts))


def test_threads_share_a_document():
    document = kdx.Document(TEXT * 1000)
    with ThreadPoolExecutor(2) as pool:
        shown = pool.submit(lambda: [len(document.text) for _ in range(100)])
        while not shown.done():
            document["/Sample:s1/Channel:A"]["Gain"] += "0"
    assert shown.result()[0] >= 1000 * len(TEXT)


def test_a_builder_takes_all_values():
    builder = kdx.Builder()
    builder.add_action(kdx.ActionBuilder("go").add_param("a,b"))
    with builder.object("A", replace=True):
        for value in ("t", 12345678, True, 0.1, ["a", "b"]):
            builder.add_param("x", value)
    lines = builder.text.splitlines()
    assert lines[:2] == [">go a\\,b", "&replace A:"]
    assert [line.split(" = ")[1] for line in lines[2:-1]] == ["t", "12345678", "1", "0.1", "a, b"]


@pytest.mark.parametrize(
    "value, number",
    [("-1.5e3[m/s]", (-1500.0, "m/s")), (".5 []", (0.5, "")), ("1 [a] b", None), ("", None)]
    + [("9" * 5000, (float("inf"), "")), ("\u0661", None), ("1 ml", None)],
)
def test_numbers(value, number):
    assert kdx.number(value) == number
