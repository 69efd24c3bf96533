/// The formats and pictures that the printer has stored.
import {$, fill, h, say} from './dom.js';
import * as doors from './doors.js';

export class Objects {
    constructor(open) {
        this.open = open;
        $('tab-objects').addEventListener('click', () => this.read());
    }

    async read() {
        const panel = $('panel-objects');
        try {
            const objects = await doors.readObjects();
            const reset = h('button', {onclick: () => this.reset(), class: 'danger'}, 'Reset printer');
            fill(panel, ...objects.map((object) => this.row(object)),
                !objects.length && h('p', {class: 'quiet pad'}, 'Nothing is stored.'), h('div', {class: 'bar'}, h('span', {class: 'space'}), reset));
        } catch (error) {
            panel.replaceChildren(h('p', {class: 'quiet pad'}, error.message));
        }
    }

    row(object) {
        const {device, name, kind, bytes} = object;
        const isSeen = kind === 'picture' || kind === 'format';
        const picture = isSeen && h('img', {src: `${doors.objectPath(object)}?format=png`, alt: `${device}:${name}`, loading: 'lazy'});
        if (picture) picture.addEventListener('error', () => picture.replaceWith(kind));
        return h('div', {class: 'object'}, h('span', {class: 'thumb'}, picture || kind), h('span', {class: 'grow'}, h('b', {}, `${device}:${name}`),
            h('span', {class: 'quiet'}, `${kind}, ${bytes.toLocaleString('en')} bytes`)),
        kind === 'format' && h('button', {onclick: () => this.look(object)}, 'Open'),
        h('button', {onclick: () => this.remove(object), 'aria-label': `Delete ${device}:${name}`}, 'Delete'));
    }

    /// A stored format in the editor: the stream that stores it and recalls it once.
    async look(object) {
        const name = `${object.device}:${object.name}`;
        try {
            const blob = new Blob([`^XA\n^DF${name}`, await doors.readObject(object), `\n^XZ\n^XA\n^XF${name}^FS\n^XZ\n`]);
            this.open(await blob.arrayBuffer(), object.name.replace(/\.[^.]*$/, ''));
        } catch (error) {
            say(error.message, true);
        }
    }

    async remove(object) {
        await doors.removeObject(object).catch((error) => say(error.message, true));
        this.read();
    }

    async reset() {
        if (!window.confirm('Reset the printer? Settings return to their defaults and the memory device R: is emptied.')) return;
        await doors.resetPrinter().then(() => say('The printer is reset.'), (error) => say(error.message, true));
        this.read();
    }
}
