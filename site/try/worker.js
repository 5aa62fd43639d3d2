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

async function answer({ text, view, fixes }) {
    if (fixes) return { fixed: await kdx.fix(text) };
    const problems = await kdx.check(text, { maxProblems: kMaxProblems });
    const canFix = problems.length > 0 && await kdx.fix(text) !== text;
    return { problems, canFix, ...await shown(view, text) };
}

onmessage = async ({ data }) => {
    try {
        postMessage(await answer(data));
    } catch (error) {
        postMessage({ problems: [], canFix: false, error: error.message });
    }
};
