/// The table of the page's fields.
import {$, h, setAttribute, setClass, setText} from './dom.js';

export class Fields {
    /// `on` has select(index), and hover(index) with -1 for none.
    constructor(on) {
        this.rows = $('fields').tBodies[0];
        this.rows.addEventListener('click', (event) => on.select(this.indexOf(event.target)));
        this.rows.addEventListener('pointerover', (event) => on.hover(this.indexOf(event.target)));
        this.rows.addEventListener('pointerleave', () => on.hover(-1));
        this.rows.addEventListener('keydown', (event) => this.key(event, on));
    }

    indexOf(target) {
        const row = target.closest('tr');
        return row ? [...this.rows.children].indexOf(row) : -1;
    }

    key(event, on) {
        const step = {ArrowDown: 1, ArrowUp: -1}[event.key];
        const index = this.indexOf(event.target);
        if (event.key === 'Enter' || event.key === ' ') {
            on.select(index);
            $('stage').focus();
        }
        else if (step && this.rows.children[index + step]) this.rows.children[index + step].focus();
        else return;
        event.preventDefault();
        if (step) on.select(this.indexOf(document.activeElement));
    }

    show(fields, marks) {
        while (this.rows.childElementCount > fields.length) this.rows.lastChild.remove();
        while (this.rows.childElementCount < fields.length) {
            this.rows.append(h('tr', {tabindex: '-1'}, ...['number', '', 'data', 'number', 'number'].map((name) => h('td', {class: name}))));
        }
        fields.forEach((field, index) => this.fill(this.rows.children[index], field, index, marks.get(index)));
        if (this.rows.firstChild && !this.rows.querySelector('[tabindex="0"]')) this.rows.firstChild.tabIndex = 0;
    }

    fill(row, field, index, mark) {
        const [number, kind, data, origin, box] = row.children;
        setText(number, String(index + 1));
        setText(kind, field.symbology || field.kind);
        setText(data, field.text ?? (field.prompt ? `(${field.prompt})` : ''));
        setText(origin, field.origin ? `${field.origin.command} ${field.origin.x},${field.origin.y}` : '');
        setText(box, field.box ? `${field.box.left},${field.box.top}  ${field.box.width}×${field.box.height}` : field.drawn ? 'off the page' : '');
        setAttribute(row, 'title', mark || field.description);
        setClass(row, 'bad', Boolean(mark));
    }

    select(index, isSeen) {
        [...this.rows.children].forEach((row, i) => {
            setClass(row, 'selected', i === index);
            setAttribute(row, 'aria-selected', i === index);
            setAttribute(row, 'tabindex', i === Math.max(index, 0) ? 0 : -1);
        });
        if (isSeen && index >= 0 && this.rows.children[index]) this.rows.children[index].scrollIntoView({block: 'nearest'});
    }
}
