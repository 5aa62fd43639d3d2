"use strict";

const fs = require("fs");
const path = require("path");

const createKdx = require("./kdx.js");
const kdxFunctions = require("./functions.js");

module.exports = kdxFunctions(createKdx, async () =>
    WebAssembly.compile(await fs.promises.readFile(path.join(__dirname, "kdx.wasm"))));
