/// The stream in its editor: text against bytes, marks, folds, the command at the cursor.
import {$, h} from './dom.js';
import {Offsets, encode, isBytes} from './bytes.js';
import {commandAt, commandsOf, defineMode, longDots, trimmedEnd} from './language.js';
import {complete, isKnown, showHelp} from './help.js';

const {CodeMirror} = window;

export class Source {
    /// `on` has change(), cursor() and refuse(sentence).
    constructor(on) {
        this.on = on;
        this.encoding = 'utf-8';
        this.marks = [];
        this.shown = [];
        defineMode(CodeMirror, isKnown);
        this.editor = CodeMirror($('source'), {
            mode: 'labels', theme: 'labels', lineNumbers: true, lineWrapping: true, lineSeparator: '\n', undoDepth: 1000, maxHighlightLength: Infinity, tabindex: 0,
            gutters: ['CodeMirror-linenumbers', 'marks'], inputStyle: 'textarea', cursorScrollMargin: 40,
            specialCharPlaceholder: placeholder, screenReaderLabel: 'Stream', spellcheck: false,
            extraKeys: {
                'Tab': false, 'Shift-Tab': false, 'Ctrl-Space': () => this.complete(), 'Alt-Space': () => this.complete(),
            },
        });
        this.editor.on('beforeChange', (editor, change) => this.allow(change));
        this.editor.on('changes', (editor, changes) => this.changed(changes));
        this.editor.on('cursorActivity', () => { this.help(); this.on.cursor(); });
    }

    get text() {
        return this.value ??= this.editor.getValue();
    }

    get offsets() {
        return this.byteOffsets ??= new Offsets(this.text, this.encoding);
    }

    get commands() {
        return this.allCommands ??= commandsOf(this.text);
    }

    get bytes() {
        return encode(this.text, this.encoding);
    }

    load(text, encoding) {
        this.encoding = encoding;
        // Folded before it is first shown: a long line of dots would take long to lay out.
        this.editor.operation(() => {
            this.editor.setValue(text);
            this.forget();
            this.fold();
        });
        this.editor.clearHistory();
    }

    forget() {
        this.value = this.byteOffsets = this.allCommands = null;
    }

    allow(change) {
        if (this.encoding === 'utf-8' || change.origin === 'setValue' || change.text.every(isBytes)) return;
        change.cancel();
        this.on.refuse('This stream is no UTF-8: it is kept byte for byte, and a character that is no single byte cannot be put in.');
    }

    changed(changes) {
        this.forget();
        this.help();
        this.on.change();
        const last = changes[changes.length - 1];
        if (last.origin === '+input' && /^[\^~]$/.test(last.text.join(''))) this.complete();
        if (changes.some((change) => change.origin === 'paste' || change.origin === 'undo')) this.fold();
    }

    complete() {
        this.editor.showHint({completeSingle: false, hint: (editor) => complete(editor, this.text, this.commands)});
    }

    help() {
        clearTimeout(this.helpTimer);
        this.helpTimer = setTimeout(() => showHelp($('help'), this.text, this.commands, this.index()), 20);
    }

    index() {
        return this.editor.indexFromPos(this.editor.getCursor('from'));
    }

    /// The byte that the cursor stands before.
    byte() {
        return this.offsets.toByte(this.index());
    }

    /// {from, to} in the editor of a run of bytes.
    range({offset, length}) {
        const at = (byte) => this.editor.posFromIndex(this.offsets.toIndex(byte));
        return {from: at(offset), to: at(offset + length)};
    }

    select(place) {
        const {from, to} = this.range(place);
        this.editor.setSelection(from, to, {scroll: false});
        this.editor.scrollIntoView({from, to}, 60);
    }

    /// Long pictures become a word; a click on it, or the cursor in it, unfolds them.
    fold() {
        for (const {from, to} of longDots(this.text, this.commands)) {
            const [start, end] = [this.editor.posFromIndex(from), this.editor.posFromIndex(to)];
            if (this.editor.findMarks(start, end).some((mark) => mark.isDots)) continue;
            const size = (to - from).toLocaleString('en');
            const word = h('button', {class: 'fold', title: 'Unfold', tabindex: '-1'}, `⋯ ${size} characters of dots`);
            const mark = this.editor.markText(start, end, {replacedWith: word, clearOnEnter: false});
            mark.isDots = true;
            word.addEventListener('click', () => mark.clear());
        }
    }

    /// Shows findings as marks: [{finding, from, to}] of the text as it is.
    showFindings(findings) {
        this.editor.operation(() => {
            this.marks.forEach((mark) => mark.clear());
            this.editor.clearGutter('marks');
            this.marks = findings.filter(({finding}) => finding.offset !== undefined).map((one) => this.mark(one));
        });
    }

    mark({finding, level}) {
        const index = this.offsets.toIndex(finding.offset);
        const command = commandAt(this.commands, index);
        const end = command ? Math.min(trimmedEnd(this.text, command), command.at + 200) : index + 1;
        const from = this.editor.posFromIndex(command ? command.at : index);
        const to = this.editor.posFromIndex(Math.max(end, index + 1));
        this.editor.setGutterMarker(from.line, 'marks', h('span', {class: `dot ${level}`, title: finding.text}));
        return this.editor.markText(from, to, {className: `finding ${level}`, attributes: {title: finding.text}});
    }

    /// Lights up runs of bytes: the commands of the field at the cursor, and where its look is defined.
    light(places) {
        this.editor.operation(() => {
            this.shown.forEach((mark) => mark.clear());
            this.shown = places.map((place) => {
                const {from, to} = this.range(place);
                return this.editor.markText(from, to, {className: 'lit'});
            });
        });
    }
}

/// Control characters show as their pictures.
function placeholder(unit) {
    const code = unit.charCodeAt(0);
    const picture = code < 0x20 ? String.fromCharCode(0x2400 + code) : code === 0x7f ? '␡' : '·';
    return h('span', {class: 'control', title: `byte ${code.toString(16).padStart(2, '0')}`}, picture);
}
