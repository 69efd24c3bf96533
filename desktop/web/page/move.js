/// A field that a hand moves: each step is an edit of the stream, and all steps of one drag are undone at once.
import {say} from './dom.js';
import {mover, toDots} from './edit.js';

export class Mover {
    constructor(view) {
        this.view = view;
        this.drags = 0;
        this.isMoving = false;
    }

    /// False if the field cannot be moved, which is said.
    begin(index) {
        const {source, report, isFresh, settings} = this.view;
        const page = report.page;
        const field = page && page.fields[index];
        if (!field || !isFresh) return false;
        this.move = mover(source.text, source.commands, source.offsets, field, Number(settings.dpi));
        if (!this.move) {
            say(field.definition ? `This field is defined in the stored format ${field.definition.format || ''}, which this stream does not hold.`
                : 'This field has no commands in the stream.', true);
            return false;
        }
        ++this.drags;
        this.page = page;
        this.isMoving = true;
        this.behind = this.move.to;
        this.last = null;
        return true;
    }

    /// So many pixels of the page from where it began.
    drag(pixelsX, pixelsY) {
        const {x, y} = toDots(this.page, pixelsX, pixelsY);
        this.put(this.move.at.x + x, this.move.at.y + y, `*drag${this.drags}`);
    }

    put(x, y, origin) {
        this.now = {x: Math.max(x, 0), y: Math.max(y, 0)};
        const text = this.move.replacement(x, y);
        if (text === this.last) return;
        this.last = text;
        const {editor} = this.view.source;
        editor.replaceRange(text, editor.posFromIndex(this.move.from), editor.posFromIndex(this.behind), origin);
        this.behind = this.move.from + text.length;
        this.generation = editor.changeGeneration();
    }

    end() {
        this.isMoving = false;
    }

    /// A step by the arrow keys. Steps that follow each other soon are undone together, and need not wait for the picture.
    step(index, stepX, stepY) {
        const now = performance.now();
        const goesOn = index === this.stepIndex && now - this.stepTime < 1000 && this.view.source.editor.isClean(this.generation);
        this.stepTime = now;
        if (!goesOn && !this.begin(index)) return;
        this.stepIndex = index;
        const from = goesOn ? this.now : this.move.at;
        const {pixelsPerDot} = this.page;
        const {x, y} = toDots(this.page, stepX * pixelsPerDot, stepY * pixelsPerDot);
        this.put(from.x + x, from.y + y, `*drag${this.drags}`);
        this.end();
    }
}
