/// Completion, and the line of help on the command at the cursor.
import {h} from './dom.js';
import {commandAt} from './language.js';
import {titles} from './titles.js';

/// Letters that the table of barcodes shortens.
const SHORT = {o: 'orientation N/R/I/B', h: 'height', f: 'line of text Y/N [Y]', g: 'text above Y/N [N]'};

let table = new Map();

/// Takes the rows of the commands' table.
export function learn(commands) {
    table = new Map();
    for (const row of commands) {
        const parameters = row.parameters.map((name) => (row.symbology && SHORT[name.replace(/ \[.*/, '')]) || name);
        for (const name of row.names) table.set(name, {...row, parameters, title: titleOf(name, row)});
    }
}

function titleOf(name, row) {
    if (titles[name]) return titles[name];
    if (row.symbology) return row.symbology;
    return /^\^A[0-9A-Z]$/.test(name) ? `font ${name[2]}` : row.section.toLowerCase();
}

export const isKnown = (name) => table.size === 0 || table.has(name);

/// Which parameter a place is in, counted from 0; -1 amid the name.
function parameterAt(text, command, index) {
    if (index < command.body) return -1;
    return text.slice(command.body, Math.min(index, command.end)).split(command.delimiter).length - 1;
}

function withDefaults(parameter, isCurrent) {
    const parts = parameter.split(/(\[[^\]]*\])/).filter((part) => part);
    const words = parts.map((part) => part.startsWith('[') ? h('span', {class: 'default', title: 'default'}, part) : part);
    return h('span', {class: isCurrent ? 'parameter current' : 'parameter'}, ...words);
}

/// Shows in `line` what stands at the cursor.
export function showHelp(line, text, commands, index) {
    const command = commandAt(commands, index);
    line.replaceChildren();
    if (!command) {
        line.append(h('span', {class: 'quiet'}, 'A label begins with ^XA and ends with ^XZ. Ctrl+Space completes.'));
        return;
    }
    const row = table.get(command.name);
    const name = h('b', {}, text.slice(command.at, command.body));
    if (!row && command.name.length < 3) {
        line.append(name, ' ', h('span', {class: 'quiet'}, 'two letters name a command'));
        return;
    }
    if (!row) {
        line.append(name, ' ', h('span', {class: 'quiet'}, table.size ? 'is not known: it is left out' : ''));
        return;
    }
    const current = row.parameters.length === 1 ? 0 : parameterAt(text, command, index);
    line.append(name, ' ', h('span', {class: 'title'}, row.title), ' ');
    row.parameters.forEach((parameter, i) => line.append(i ? ', ' : '', withDefaults(parameter, i === current)));
    const note = row.state.replace(/^done(, with|: |$)/, (all, rest) => (rest === ', with' ? 'with' : '')).replace(/`/g, '');
    if (note) line.append(' ', h('span', {class: 'quiet note', title: note}, note));
}

/// What may stand at the cursor: commands that begin with the letters behind the prefix.
export function complete(editor, text, commands) {
    const cursor = editor.getCursor();
    const index = editor.indexFromPos(cursor);
    const command = commandAt(commands, index);
    if (!command || index > command.body) return null;
    const typed = text.slice(command.at + 1, index).toUpperCase();
    const caret = command.caret;
    const list = [];
    for (const [name, row] of table) {
        if (!name.slice(1).startsWith(typed) || (name[0] === '^') !== (text[command.at] === caret)) continue;
        list.push({text: text[command.at] + name.slice(1), row, render: renderHint});
    }
    list.sort((a, b) => (a.text < b.text ? -1 : 1));
    const from = editor.posFromIndex(command.at);
    return list.length ? {list, from, to: cursor} : null;
}

function renderHint(element, all, hint) {
    element.append(h('b', {}, hint.text), h('span', {class: 'title'}, hint.row.title),
        h('span', {class: 'quiet'}, hint.row.parameters.join(', ')));
}
