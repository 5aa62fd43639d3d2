"use strict";

// What an installed kdx-wasm does: node --test test.js, in a folder where it is installed.
const assert = require("node:assert");
const test = require("node:test");
const kdx = require("kdx-wasm");

const kText = "Sample:s1\nGain=10 # ä\nEND\n";
const kLaidOut = "Sample: s1\n  Gain = 10 # ä\nEND\n";
const kMap = { "/Sample:s1": { Gain: "10" } };

const rows = [
    ["toMap", kText, kMap],
    ["format", kText, kLaidOut],
    ["format", "\ufeffA:\r\nEND\r\n", "\ufeffA:\r\nEND\r\n"],
    ["formatDiff", kLaidOut, ""],
    ["fix", "A:\nend\nEND\nEND\n", "A:\nend\nEND\n"],
    ["fixDiff", "A:\nEND\nEND\n", "--- /text.kdx\n+++ /text.kdx\n@@ -1,3 +1,2 @@\n A:\n END\n-END\n"],
    ["tree", kText, "Sample: s1 (1 parameter)\n"],
    ["fromMap", kMap, "Sample: s1\n  Gain = 10\nEND # Sample:s1\n"],
];
for (const [name, input, expected] of rows)
    test(`${name} of ${JSON.stringify(input)}`, async () =>
        assert.deepStrictEqual(await kdx[name](input), expected));

test("places count units of UTF-16", async () => {
    for (const [text, line, column, offset] of [
        ["A:\nEND x\n", 2, 5, 7], ["\ufeffA b", 1, 4, 4], ["# 😀\nä😀 ü", 2, 1, 5]])
        assert.deepStrictEqual((await kdx.check(text, { ignore: ["byte-order-mark"] }))
            .filter(({ severity }) => severity === "error")
            .map((problem) => [problem.line, problem.column, problem.offset]),
        [[line, column, offset]], text);
});

test("what cannot be taken is refused with its places", async () => {
    await assert.rejects(kdx.toMap("A:\nEND\nEND\n"), (error) =>
        error instanceof kdx.KdxError && error.problems[0].line === 3);
    await assert.rejects(kdx.fromMap({ "/A": { x: "a#b" } }), /'#'/);
});
