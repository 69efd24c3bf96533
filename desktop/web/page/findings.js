/// What is wrong in a stream: in the list, in the text, on the label.
import {$, h} from './dom.js';

const GRAVE = new Set(['unknown-command', 'barcode-refused', 'barcode-cut', 'dropped']);

export const levelOf = ({kind}) => GRAVE.has(kind) || kind.startsWith('scan') ? 'bad' : kind === 'setup-command' ? 'slight' : 'fair';
/// Whether a finding says that a symbol will not be read.
export const isOfBarcode = ({kind}) => kind.startsWith('barcode') || kind.startsWith('scan');

/// For the index of a field, the sentence of the finding that stands in its commands.
export function marksOf(fields, findings, label) {
    const marks = new Map();
    for (const finding of findings) {
        if (finding.offset === undefined || finding.kind === 'setup-command' || (finding.label && finding.label !== label)) continue;
        const index = fields.findIndex((field) => holds(field.commands, finding.offset) ||
            (field.definition && holds(field.definition.commands, finding.offset)));
        if (index >= 0 && (!marks.has(index) || isOfBarcode(finding))) marks.set(index, finding.text);
    }
    return marks;
}

const holds = (place, offset) => place && offset >= place.offset && offset < place.offset + place.length;

const words = (finding) => {
    const times = finding.times ? ` (${finding.times} times)` : '';
    const place = finding.line ? `${finding.line}:${finding.column}` : '';
    return [h('span', {class: `dot ${levelOf(finding)}`, 'aria-hidden': 'true'}), h('span', {class: 'place'}, place), h('span', {}, finding.text + times)];
};

/// The list under the editor; `go` takes the finding that is pressed.
export function showFindings(findings, go) {
    const list = $('findings');
    const key = JSON.stringify(findings.map(({text, offset}) => [text, offset]));
    if (list.dataset.key === key) return;
    list.dataset.key = key;
    document.querySelector('.panes [data-pane="findings"]').textContent = findings.length ? `Findings (${findings.length})` : 'Findings';
    list.replaceChildren(...findings.map((finding) => h('button', {class: 'row', onclick: () => go(finding)}, ...words(finding))));
    if (!findings.length) list.append(h('p', {class: 'quiet'}, 'Nothing is left out.'));
}

/// The same for a job of the printer, where there is nothing to go to.
export const listFindings = (findings) => h('ul', {class: 'told'}, ...findings.map((finding) => h('li', {class: 'row'}, ...words(finding))));
