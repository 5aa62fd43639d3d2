"use strict";

/**
 * The functions of index.d.ts. `createKdx` is what kdx.js defines, `compile` gives the compiled
 * kdx.wasm. Each call runs the program anew, with files of its own: nothing is left of one for the
 * next.
 */
function kdxFunctions(createKdx, compile) {
    const kText = "/text.kdx";
    const kStreams = ["/input", "/output", "/errors"];
    const decoder = new TextDecoder("utf-8", { ignoreBOM: true });
    const encoder = new TextEncoder();
    let compiled = null;

    class KdxError extends Error {
        /** `problems` are those that the program told of, none where it is not about a place. */
        constructor(messages, problems) {
            super(messages.join("\n"));
            this.name = "KdxError";
            this.problems = problems;
        }
    }

    async function newProgram() {
        compiled ??= compile();
        const module = await compiled;
        return new Promise((resolve, reject) => {
            createKdx({
                quit(status, exit) { throw exit; },
                instantiateWasm(imports, done) {
                    WebAssembly.instantiate(module, imports).then(done, reject);
                    return {};
                },
            }).then(resolve, reject);
        });
    }

    /** Files take the place of the standard streams: they hold any bytes, and no terminal. */
    function redirect(files) {
        kStreams.forEach((path) => files.writeFile(path, ""));
        kStreams.forEach((path, stream) => files.close(files.getStream(stream)));
        kStreams.forEach((path, stream) => files.open(path, stream === 0 ? "r" : "w"));
    }

    /** Runs kdx on a text; `left` is what the text has become. */
    async function run(text, ...words) {
        const program = await newProgram();
        const files = program.FS;
        files.writeFile(kText, encoder.encode(text));
        redirect(files);
        const status = program.callMain(["--json", ...words, kText]);
        const read = (path) => decoder.decode(files.readFile(path));
        return { status, output: read(kStreams[1]), errors: read(kStreams[2]), left: read(kText) };
    }

    /** The diagnostics among lines of JSON. */
    function diagnosticsOf(lines) {
        return lines.split("\n").filter((line) => line.startsWith("{")).map((line) => JSON.parse(line));
    }

    /** So many units of UTF-16 are the first bytes of a line. */
    function unitsOf(line, bytes) {
        let units = 0;
        for (const character of line) {
            if (bytes <= 0) break;
            bytes -= encoder.encode(character).length;
            units += character.length;
        }
        return units;
    }

    /** Finds places in a text, whose lines and columns count bytes. */
    class Places {
        constructor(text) {
            this.text = text;
            this.begins = [text.startsWith("\ufeff") ? 1 : 0];
            for (let end = text.indexOf("\n"); end >= 0; end = text.indexOf("\n", end + 1))
                this.begins.push(end + 1);
        }

        find(line, byteColumn) {
            const begin = this.begins[line - 1];
            const end = line < this.begins.length ? this.begins[line] : this.text.length;
            const units = unitsOf(this.text.slice(begin, end), byteColumn - 1);
            return { line, column: units + 1, offset: begin + units };
        }
    }

    function problemsOf(text, diagnostics) {
        const placed = diagnostics.filter((diagnostic) => diagnostic.line);
        const places = placed.length > 0 ? new Places(text) : null;
        return placed.map(({ line, column, severity, rule, message }) =>
            ({ ...places.find(line, column), severity, rule, message }));
    }

    function fail(text, errors) {
        const diagnostics = diagnosticsOf(errors).filter(({ severity }) => severity === "error");
        const messages = diagnostics.map(({ line, column, message }) =>
            line ? `${line}:${column}: ${message}` : message);
        throw new KdxError(messages.length > 0 ? messages : [errors.trim()],
            problemsOf(text, diagnostics));
    }

    /** What kdx prints for a text; status 1 is a finding. */
    async function outputOf(text, ...words) {
        const { status, output, errors } = await run(text, ...words);
        if (status > 1) fail(text, errors);
        return output;
    }

    async function check(text, { maxProblems = 0, select = [], ignore = [] } = {}) {
        const rules = [["--select", select], ["--ignore", ignore]]
            .filter(([, names]) => names.length > 0)
            .map(([option, names]) => `${option}=${names.join(",")}`);
        return problemsOf(text, diagnosticsOf(
            await outputOf(text, "check", `--max-errors=${maxProblems}`, ...rules)));
    }

    async function fix(text, { select = [] } = {}) {
        const rules = select.length > 0 ? [`--select=${select.join(",")}`] : [];
        const { status, errors, left } = await run(text, "check", "--fix", ...rules);
        if (status > 1) fail(text, errors);
        return left;
    }

    async function fixDiff(text, { select = [] } = {}) {
        const rules = select.length > 0 ? [`--select=${select.join(",")}`] : [];
        return outputOf(text, "check", "--fix", "--diff", ...rules);
    }

    async function fromMap(map, { indent = 2, compact = false, endComments = true } = {}) {
        const options = [`--indent=${indent}`];
        if (compact) options.push("--compact");
        if (!endComments) options.push("--no-end-comments");
        return outputOf(JSON.stringify(map), "write", ...options);
    }

    return {
        KdxError,
        check,
        fix,
        fixDiff,
        format: (text) => outputOf(text, "fmt"),
        formatDiff: (text) => outputOf(text, "fmt", "--diff"),
        fromMap,
        toMap: async (text) => JSON.parse(await outputOf(text, "map")),
        tree: (text) => outputOf(text, "tree"),
    };
}

if (typeof module === "object") module.exports = kdxFunctions;
