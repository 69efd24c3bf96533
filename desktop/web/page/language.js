/// The language as the editor sees it: commands begin with a prefix, have two letters and parameters up to the next prefix.
/// Prefixes and delimiter are those that the stream has set last.

const DATA = new Set(['FD', 'FV', 'SN']);
const SETS = {CC: 'caret', CT: 'tilde', CD: 'delimiter'};
/// Behind so many delimiters a picture's dots begin.
const DOTS = {GF: 4, DG: 3, DY: 5};

const startState = () => ({caret: '^', tilde: '~', delimiter: ','});

const isBlank = (unit) => unit === ' ' || unit === '\t' || unit === '\r' || unit === '\n';

/// All commands of a text: {name, at, body, end, caret, delimiter}; the name with its usual prefix, `body` where the parameters
/// begin, `end` where the next command begins or the text ends.
export function commandsOf(text) {
    const commands = [];
    const set = startState();
    let prefix = prefixOf(set);
    let last = null;
    for (let at = seek(text, prefix, 0); at < text.length;) {
        const letters = text.slice(at + 1, at + 3).toUpperCase();
        const name = (text[at] === set.caret ? '^' : '~') + letters;
        last = {name, at, body: Math.min(at + 3, text.length), end: text.length, caret: set.caret, delimiter: set.delimiter};
        let next = last.body;
        if (SETS[letters] && text[next] && !isBlank(text[next])) {
            set[SETS[letters]] = text[next++];
            prefix = prefixOf(set);
        } else if (letters === 'GF') {
            next = behindRawDots(text, next, set.delimiter);
        }
        at = seek(text, prefix, next);
        last.end = at;
        commands.push(last);
    }
    return commands;
}

const escaped = (unit) => unit.replace(/[\\\]^-]/, '\\$&');
const prefixOf = (set) => new RegExp(`[${escaped(set.caret)}${escaped(set.tilde)}]`, 'g');

function seek(text, prefix, from) {
    prefix.lastIndex = from;
    const found = prefix.exec(text);
    return found ? found.index : text.length;
}

/// Raw dots may hold prefixes: their count says where they end.
function behindRawDots(text, body, delimiter) {
    if (text[body] !== 'B') return body;
    const head = text.slice(body, body + 60).split(delimiter);
    const count = Number.parseInt(head[2], 10);
    if (head.length < 5 || !(count > 0)) return body;
    return Math.min(body + head.slice(0, 4).join(delimiter).length + 1 + count, text.length);
}

/// The command at a place, or the one before it.
export function commandAt(commands, index) {
    let low = 0;
    let high = commands.length - 1;
    while (low < high) {
        const middle = (low + high + 1) >> 1;
        if (commands[middle].at <= index) low = middle;
        else high = middle - 1;
    }
    return commands.length && commands[low].at <= index ? commands[low] : null;
}

/// The end of a command without the blanks behind it.
export function trimmedEnd(text, command) {
    let end = command.end;
    while (end > command.body && isBlank(text[end - 1])) --end;
    return end;
}

/// Pictures whose dots are better folded away: {from, to} in the text.
export function longDots(text, commands, least = 160) {
    const runs = [];
    for (const command of commands) {
        const delimiters = DOTS[command.name.slice(1)];
        if (!delimiters || command.end - command.body < least) continue;
        let from = command.body;
        for (let i = 0; i < delimiters && from > 0; ++i) from = text.indexOf(command.delimiter, from) + 1;
        const to = trimmedEnd(text, command);
        if (from > command.body && to - from >= least) runs.push({from, to});
    }
    return runs;
}

// The mode of the editor, line by line.

function readName(stream, state) {
    state.isControl = stream.next() === state.tilde;
    let letters = '';
    while (letters.length < 2 && !stream.eol()) letters += stream.next();
    state.name = letters.toUpperCase();
    state.index = 0;
    state.takes = SETS[state.name] || '';
    state.head = '';
    return state.known((state.isControl ? '~' : '^') + state.name) ? 'keyword' : 'unknown';
}

function startDots(state) {
    const [kind, , count] = state.head.split(state.delimiter);
    state.raw = state.name === 'GF' && kind === 'B' ? Number.parseInt(count, 10) || 0 : 0;
}

function readParameter(stream, state) {
    if (stream.eat(state.delimiter)) {
        if (DOTS[state.name]) state.head += state.delimiter;
        if (++state.index === DOTS[state.name]) startDots(state);
        return 'delimiter';
    }
    const start = stream.pos;
    while (!stream.eol() && ![state.caret, state.tilde, state.delimiter].includes(stream.peek())) stream.next();
    const text = stream.string.slice(start, stream.pos);
    if (DOTS[state.name]) state.head += text;
    return /^\s*-?[\d.]+\s*$/.test(text) ? 'number' : 'parameter';
}

function readUntilPrefix(stream, state) {
    const ends = [state.caret, state.tilde].map((prefix) => stream.string.indexOf(prefix, stream.pos)).filter((at) => at >= 0);
    stream.pos = Math.min(stream.string.length, ...ends);
}

function readRaw(stream, state) {
    const length = Math.min(state.raw, stream.string.length - stream.pos);
    stream.pos += length;
    state.raw -= length;
    if (state.raw > 0) --state.raw;  // the end of the line is one of them
    return 'dots';
}

function token(stream, state) {
    if (state.raw > 0) return readRaw(stream, state);
    if (state.takes && !/\s/.test(stream.peek())) {
        state[state.takes] = stream.next();
        state.takes = '';
        return 'number';
    }
    if (stream.peek() === state.caret || stream.peek() === state.tilde) return readName(stream, state);
    if (!state.name) {
        readUntilPrefix(stream, state);
        return 'stray';
    }
    if (DATA.has(state.name)) {
        readUntilPrefix(stream, state);
        return 'data';
    }
    if (state.name === 'FX') {
        readUntilPrefix(stream, state);
        return 'comment';
    }
    if (DOTS[state.name] <= state.index) {
        readUntilPrefix(stream, state);
        return 'dots';
    }
    return readParameter(stream, state);
}

/// The mode, which marks the commands that `known` does not know.
export function defineMode(codeMirror, known) {
    codeMirror.defineMode('labels', () => ({
        startState: () => ({...startState(), name: '', index: 0, takes: '', head: '', raw: 0, known}),
        copyState: (state) => ({...state}),
        blankLine: (state) => { if (state.raw > 0) --state.raw; },
        token,
    }));
}
