"use strict";

importScripts("kdx/kdx.js", "kdx/functions.js");

const kMaxProblems = 100;

const kdx = kdxFunctions(createKdx, async () =>
    WebAssembly.compile(await (await fetch("kdx/kdx.wasm")).arrayBuffer()));

const views = {
    problems: async () => "",
    layout: kdx.format,
    diff: kdx.formatDiff,
    tree: kdx.tree,
    map: async (text) => JSON.stringify(await kdx.toMap(text), null, 2),
};

/** What a view shows; a text that it cannot take has an error instead. */
async function shown(view, text) {
    try {
        return { output: await views[view](text) };
    } catch (error) {
        return { error: error.message };
    }
}

/** The changes of a unified diff: so many lines, from a line on, that others take the place of. */
function changesOf(diff) {
    const changes = [];
    let line = 0, change = null;
    for (const row of diff.split("\n").slice(2)) {
        if (row[0] === "-" || row[0] === "+") {
            if (!change) changes.push(change = { line, gone: 0, added: [] });
            if (row[0] === "+") change.added.push(row.slice(1));
            else change.gone += 1;
        } else change = null;
        if (row[0] === "-" || row[0] === " ") line += 1;
        if (row[0] === "@") line = Number(/^@@ -(\d+)/.exec(row)[1]);
    }
    return changes;
}

/** The part of a change that is about a line, where lines change one by one. */
function partAt({ line, gone, added }, wanted) {
    const at = wanted - line;
    if (gone === added.length) return { line: wanted, gone: 1, added: [added[at]] };
    return added.length === 0 ? { line: wanted, gone: 1, added } : { line, gone, added };
}

/** Gives each problem that has a safe fix the change of lines that makes it. */
async function addFixes(text, problems) {
    const changes = {};
    for (const rule of new Set(problems.map((problem) => problem.rule)))
        changes[rule] = changesOf(await kdx.fixDiff(text, { select: [rule] }));
    for (const problem of problems) {
        const change = changes[problem.rule].find(({ line, gone }) =>
            problem.line >= line && problem.line < line + gone);
        if (change) problem.fix = partAt(change, problem.line);
    }
}

async function answer({ text, view, fixes }) {
    if (fixes) return { fixed: await kdx.fix(text) };
    const problems = await kdx.check(text, { maxProblems: kMaxProblems });
    const canFix = problems.length > 0 && await kdx.fix(text) !== text;
    if (canFix) await addFixes(text, problems);
    return { problems, canFix, ...await shown(view, text) };
}

onmessage = async ({ data }) => {
    try {
        postMessage(await answer(data));
    } catch (error) {
        postMessage({ problems: [], canFix: false, error: error.message });
    }
};
