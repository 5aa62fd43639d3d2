"use strict";

const kLongestLink = 8000;  // characters of an address that programs pass on whole
const kLongestUndone = 50000;  // characters that the browser replaces quickly enough to undo it
const kPause = 150;         // milliseconds without typing before a text is looked at

const element = (id) => document.getElementById(id);
const editor = element("text");
const view = element("view");
const tabs = [...document.querySelectorAll("[role=tab]")];
const worker = new Worker("worker.js");

let selected = "problems";
let busy = false;     // the worker is at work
let waiting = null;   // what it is asked next: the latest question only
let timer = 0;
let lineCount = 1;

// ---- The text and the address. What stands behind '#' is never sent.

function encoded(text) {
    const bytes = new TextEncoder().encode(text);
    const characters = Array.from(bytes, (byte) => String.fromCharCode(byte)).join("");
    return btoa(characters).replaceAll("+", "-").replaceAll("/", "_").replaceAll("=", "");
}

function decoded(code) {
    const characters = atob(code.replaceAll("-", "+").replaceAll("_", "/"));
    const bytes = Uint8Array.from(characters, (character) => character.charCodeAt(0));
    return new TextDecoder("utf-8", { ignoreBOM: true }).decode(bytes);
}

/** The text in the address; nothing where there is none, or none that can be read. */
function textOfAddress() {
    try {
        return decoded(location.hash.slice(1));
    } catch {
        return "";
    }
}

function isShort(text) {
    return text.length <= kLongestLink && encoded(text).length <= kLongestLink;
}

function putIntoAddress(text) {
    history.replaceState(null, "", isShort(text) ? `#${encoded(text)}` : location.pathname);
}

// ---- The worker, asked one question at a time.

function ask(question) {
    if (busy) {
        waiting = question;
        return;
    }
    busy = true;
    worker.postMessage(question);
}

function askForView() {
    putIntoAddress(editor.value);
    ask({ text: editor.value, view: selected });
}

worker.onmessage = ({ data }) => {
    busy = false;
    const next = waiting;
    waiting = null;
    if (next) return ask(next);
    if (data.fixed === undefined) return show(data);
    replaceText(data.fixed);
};

worker.onerror = () => { element("state").textContent = "This browser cannot run kdx."; };

// ---- The editor.

/** The numbers of the lines in view; of a long text all of them would take as long as the text. */
function showNumbers() {
    const first = Math.floor(editor.scrollTop / lineHeight());
    const count = Math.min(Math.ceil(editor.clientHeight / lineHeight()) + 1, lineCount - first);
    element("numbers").textContent =
        Array.from({ length: Math.max(count, 0) }, (_, i) => first + i + 1).join("\n");
    element("numbers").style.top = `${first * lineHeight()}px`;
}

function followScroll() {
    showNumbers();
    element("lines").style.transform = `translateY(${-editor.scrollTop}px)`;
}

function countLines() {
    lineCount = editor.value.split("\n").length;
    showNumbers();
}

function textChanged() {
    countLines();
    clearTimeout(timer);
    timer = setTimeout(askForView, kPause);
}

/** Replaces the text in a way that the browser can undo, as far as it knows how. */
function replaceText(text) {
    editor.focus();
    editor.select();
    if (text.length > kLongestUndone || !document.execCommand("insertText", false, text))
        editor.value = text;
    editor.setSelectionRange(0, 0);
    textChanged();
}

function lineHeight() {
    return parseFloat(getComputedStyle(editor).lineHeight);
}

/** Selects what stands at a place up to the next blank, and brings it into view. */
function goTo(problem) {
    const rest = editor.value.slice(problem.offset, problem.offset + 80);
    editor.focus();
    editor.setSelectionRange(problem.offset, problem.offset + /^\S*/.exec(rest)[0].length);
    editor.scrollTop = (problem.line - 1) * lineHeight() - editor.clientHeight / 3;
}

function mark(problem) {
    const sign = document.createElement("div");
    sign.className = problem.severity;
    sign.style.top = `${(problem.line - 1) * lineHeight()}px`;
    return sign;
}

// ---- The views. Text is put in as text, never as HTML.

function counted(count, word) {
    return `${count} ${word}${count === 1 ? "" : "s"}`;
}

function stateOf(problems) {
    const counts = ["error", "warning"].map((severity) =>
        [problems.filter((problem) => problem.severity === severity).length, severity]);
    const parts = counts.filter(([count]) => count > 0).map(([count, word]) => counted(count, word));
    return parts.join(", ") || "No problem";
}

function applyFix(problem) {
    const { line, gone, added } = problem.fix;
    const lines = editor.value.split("\n");
    lines.splice(line - 1, gone, ...added);
    replaceText(lines.join("\n"));
    goTo(problem);
}

function fixButton(problem, description) {
    const button = document.createElement("button");
    button.type = "button";
    button.className = "fix";
    button.textContent = "Fix";
    button.setAttribute("aria-label", `Fix ${description}`);
    button.addEventListener("click", () => applyFix(problem));
    return button;
}

function row(problem) {
    const button = document.createElement("button");
    button.type = "button";
    button.className = problem.severity;
    button.textContent =
        `${problem.line}:${problem.column} ${problem.severity}: ${problem.message} [${problem.rule}]`;
    button.addEventListener("click", () => goTo(problem));
    const item = document.createElement("li");
    item.append(button);
    if (problem.fix) item.append(fixButton(problem, button.textContent));
    return item;
}

function listed(problems) {
    const list = document.createElement("ol");
    list.append(...problems.map(row));
    return list;
}

function printed(text, className) {
    const block = document.createElement("pre");
    block.className = className;
    block.textContent = text;
    return block;
}

function diffLines(text) {
    const block = printed("", "diff");
    for (const line of text.split("\n").slice(2)) {
        const shown = document.createElement({ "-": "del", "+": "ins" }[line[0]] ?? "span");
        shown.textContent = `${line}\n`;
        block.append(shown);
    }
    return block;
}

function content({ problems, output, error }) {
    if (selected === "problems") return listed(problems);
    if (error) return printed(error, "error");
    if (selected !== "diff") return printed(output, selected);
    return output === "" ? printed("The text is laid out.", "") : diffLines(output);
}

function show(answer) {
    element("state").textContent = stateOf(answer.problems);
    element("fix").disabled = !answer.canFix;
    element("marks").replaceChildren(...answer.problems.map(mark));
    view.replaceChildren(content(answer));
}

function select(tab) {
    selected = tab.id.replace("tab-", "");
    for (const other of tabs) {
        other.setAttribute("aria-selected", other === tab);
        other.tabIndex = other === tab ? 0 : -1;
    }
    view.setAttribute("aria-labelledby", tab.id);
    askForView();
}

/** Arrows, Home and End lead from tab to tab. */
function moveTab(event) {
    const at = tabs.indexOf(event.target);
    const to = { ArrowRight: at + 1, ArrowLeft: at - 1, Home: 0, End: -1 }[event.key];
    if (to === undefined) return;
    event.preventDefault();
    const tab = tabs.at(to % tabs.length);
    tab.focus();
    select(tab);
}

async function takeExample() {
    const name = element("example").value;
    if (name) replaceText(await (await fetch(`examples/${name}.kdx`)).text());
}

async function copyLink() {
    const canCopy = isShort(editor.value);
    if (canCopy) await navigator.clipboard.writeText(location.href);
    element("state").textContent =
        canCopy ? "The address with the text is copied." : "The text is too long for an address.";
}

function begin() {
    for (const tab of tabs) {
        tab.addEventListener("click", () => select(tab));
        tab.addEventListener("keydown", moveTab);
    }
    editor.addEventListener("input", textChanged);
    editor.addEventListener("scroll", followScroll);
    element("example").addEventListener("change", takeExample);
    element("fix").addEventListener("click", () => ask({ text: editor.value, fixes: true }));
    element("link").addEventListener("click", copyLink);
    addEventListener("hashchange", () => replaceText(textOfAddress()));
    editor.value = textOfAddress();
    countLines();
    new ResizeObserver(showNumbers).observe(editor);
    select(tabs[0]);
    if (editor.value) return;
    element("example").value = "sample";
    takeExample();
}

begin();
