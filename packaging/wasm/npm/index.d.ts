/** Object path to parameter name to value, as "/Sample:s1/Channel:A" to "Gain" to "10". */
export type KdxMap = Record<string, Record<string, string>>;

export interface Problem {
    /** From 1, the column in units of UTF-16, as JavaScript counts them. */
    line: number;
    column: number;
    /** The same place, from the beginning of the text. */
    offset: number;
    severity: "error" | "warning" | "note";
    /** A short fixed name. */
    rule: string;
    message: string;
}

/** What is thrown for a text, or a map, that cannot be taken. */
export class KdxError extends Error {
    /** Those that have a place in the text. */
    problems: Problem[];
}

export interface CheckOptions {
    /** So many errors, and as many warnings, are told of; 0 for all, which is the default. */
    maxProblems?: number;
    /** Names of rules: these alone. */
    select?: string[];
    /** Names of rules: not these. */
    ignore?: string[];
}

/** All that is wrong with a text, and what looks like a mistake, in the order of the text. */
export function check(text: string, options?: CheckOptions): Promise<Problem[]>;

/** The text with all fixes made after which it reads as before; those of some rules alone. */
export function fix(text: string, options?: { select?: string[] }): Promise<string>;

/** What fix() would change, as a unified diff; empty when nothing. */
export function fixDiff(text: string, options?: { select?: string[] }): Promise<string>;

/** The text laid out anew. Throws KdxError for a line that is no KDX. */
export function format(text: string): Promise<string>;

/** What format() would change, as a unified diff; empty when nothing. */
export function formatDiff(text: string): Promise<string>;

/** The objects and parameters. Throws KdxError for a text with errors. */
export function toMap(text: string): Promise<KdxMap>;

/** The text of a map. Throws KdxError for what KDX cannot carry. */
export function fromMap(map: KdxMap, options?: {
    /** Blanks for each level, 2 by default. */
    indent?: number;
    /** Without blanks around ':' and '='. */
    compact?: boolean;
    /** Whether a comment behind an END names the object, which is the default. */
    endComments?: boolean;
}): Promise<string>;

/** How the objects are nested, drawn. Throws KdxError for a text with errors. */
export function tree(text: string): Promise<string>;
