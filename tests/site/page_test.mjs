// The page to try KDX on, in a browser: node page_test.mjs ADDRESS CHROMIUM FOLDER. Pictures of it
// go into the folder.
import assert from "node:assert";
import test from "node:test";

import { chromium } from "playwright-core";

const [address, executablePath, folder] = process.argv.slice(2);
const browser = await chromium.launch({ executablePath, args: ["--no-sandbox"] });
test.after(() => browser.close());

/** A new page with a text, looked at; what the browser complains of fails the test. */
async function opened(text, size = { width: 1280, height: 800 }) {
    const page = await browser.newPage({ viewport: size });
    page.complaints = [];
    page.on("console", (message) => {
        if (["error", "warning"].includes(message.type())) page.complaints.push(message.text());
    });
    page.on("pageerror", (error) => page.complaints.push(error.message));
    page.on("request", (request) => {
        if (!request.url().startsWith(address)) page.complaints.push(request.url());
    });
    await page.goto(`${address}/try/index.html#${Buffer.from(text).toString("base64url")}`);
    await looked(page);
    return page;
}

const looked = (page) => page.waitForFunction(() =>
    /problem|error|warning/.test(document.getElementById("state").textContent));
const shown = (page) => page.locator("#view").innerText();
const textOf = (page) => page.locator("#text").inputValue();

async function closed(page) {
    assert.deepStrictEqual(page.complaints, []);
    await page.close();
}

const kBroken = "# ä😀\nSample: s1\n  ä😀 Volume\n  Gain = 1\nEND\nEND\n";

test("problems stand at their places, a click leads there, a fix applies", async () => {
    const page = await opened(kBroken);
    const rows = page.locator("#view li button:not(.fix)");
    assert.match(await rows.first().innerText(), /^3:3 error: /);
    await rows.last().click();
    const selection = await page.evaluate(() => {
        const text = document.getElementById("text");
        return [text.selectionStart, text.value.slice(text.selectionStart, text.selectionEnd)];
    });
    assert.deepStrictEqual(selection, [kBroken.lastIndexOf("END"), "END"]);
    await page.screenshot({ path: `${folder}/broken.png` });
    await page.click("#fix");
    await page.waitForFunction((before) => document.getElementById("text").value !== before, kBroken);
    assert.strictEqual(await textOf(page), kBroken.replace("END\nEND\n", "END\n"));
    await closed(page);
});

test("a fix is made of one problem, by keyboard", async () => {
    const page = await opened("A:\nEND\nEND\nEND\nB:\nEND\nEND\n");
    const fixes = page.locator("#view li .fix");
    for (const [index, expected, place] of [
        [2, "A:\nEND\nEND\nEND\nB:\nEND\n", 22], [0, "A:\nEND\nEND\nB:\nEND\n", 7],
    ]) {
        await fixes.nth(index).focus();
        await page.keyboard.press("Enter");
        await page.waitForFunction((text) => document.getElementById("text").value === text, expected);
        await page.waitForFunction((count) =>
            document.querySelectorAll("#view .fix").length === count, index || 1);
        assert.strictEqual(await page.evaluate(() =>
            document.getElementById("text").selectionStart), place);
    }
    await page.screenshot({ path: `${folder}/fix.png` });
    await closed(page);
});

test("views are reached by keyboard and show what kdx says", async () => {
    const page = await opened("Sample:s1\nGain=10\n\n\n\nEND\n");
    await page.focus("#tab-problems");
    for (const expected of ["Sample: s1\n  Gain = 10\n\nEND", "-Gain=10", "Sample: s1 (1 parameter)",
        '"Gain": "10"']) {
        await page.keyboard.press("ArrowRight");
        await page.waitForFunction((part) =>
            document.getElementById("view").innerText.includes(part), expected);
    }
    await closed(page);
});

test("a text stays text", async () => {
    const text = 'S: a\n  x = <script>alert(1)</script><img src=x onerror="alert(1)">\nEND\n';
    const page = await opened(text);
    page.on("dialog", () => assert.fail("a script ran"));
    for (const tab of ["layout", "map"]) {
        await page.click(`#tab-${tab}`);
        await page.waitForFunction(() =>
            document.getElementById("view").innerText.includes("<script>alert(1)</script>"));
    }
    assert.strictEqual(await page.locator("#view script, #view img").count(), 0);
    await closed(page);
});

// A loaded machine stretches all times, so that the bound grows with that of the browser alone.
test("a text of 1 MB does not freeze the page", async () => {
    const page = await opened("A:\nEND\n");
    const text = "Sample: s\n  Gain = 10 # the gain\nEND\n".repeat(28000);
    const [ofPlain, own, longest] = await page.evaluate(async (value) => {
        const plain = document.createElement("textarea");
        document.body.append(plain);
        const timeOf = (editor) => {
            const begin = performance.now();
            editor.value = value;
            editor.dispatchEvent(new Event("input"));
            return editor.scrollHeight && performance.now() - begin;
        };
        const ofPlain = timeOf(plain);
        plain.remove();
        const own = timeOf(document.getElementById("text"));
        let last = performance.now(), pause = 0;
        const watch = setInterval(() => {
            pause = Math.max(pause, performance.now() - last);
            last = performance.now();
        }, 5);
        while (!document.getElementById("state").textContent.includes("warning"))
            await new Promise((done) => setTimeout(done, 20));
        clearInterval(watch);
        return [ofPlain, own, pause].map(Math.round);
    }, text);
    console.log(`${text.length} bytes: put in in ${own} ms, by a plain textarea in ${ofPlain} ms; ` +
        `then no pause longer than ${longest} ms`);
    assert.ok(Math.max(own, longest) < 2 * ofPlain + 500);
    await closed(page);
});

test("examples, the address, a tree, and a phone in the dark", async () => {
    const page = await opened("");
    for (const name of ["instrument", "deployment"]) {
        await page.selectOption("#example", name);
        await page.waitForFunction((code) => location.hash.length > 1 && location.hash !== code,
            await page.evaluate(() => location.hash));
    }
    await page.click("#tab-tree");
    await page.waitForFunction(() => document.getElementById("view").innerText.includes("└── "));
    await page.screenshot({ path: `${folder}/tree.png` });
    const text = await textOf(page);
    const again = await opened(text, { width: 375, height: 740 });
    await again.emulateMedia({ colorScheme: "dark" });
    assert.strictEqual(await textOf(again), text);
    const width = await again.evaluate(() => document.documentElement.scrollWidth);
    assert.ok(width <= 375, `${width} pixels wide`);
    await again.screenshot({ path: `${folder}/phone.png`, fullPage: true });
    await closed(again);
    await closed(page);
});
