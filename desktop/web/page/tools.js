/// The buttons, boxes and keys of the editor's view.
import {$, h, keep, memory} from './dom.js';
import {ZOOMS} from './label.js';

export const NEW_LABEL = '^XA\n^FO50,50^A0N,60,60^FDHello^FS\n^FO50,130^BY3^BCN,120,Y,N,N^FD12345678^FS\n^XZ\n';

export function wireTools(view) {
    wireFiles(view);
    wireSettings(view);
    wireZoom(view);
    wireKeys(view);
    wirePanes();
    wireDivider();
}

function wireFiles(view) {
    const {editor} = view.source;
    const chooser = h('input', {type: 'file'});
    const read = async (file) => view.openBytes(await file.arrayBuffer(), file.name.replace(/\.[^.]*$/, ''));
    chooser.addEventListener('change', () => {
        if (chooser.files[0]) read(chooser.files[0]);
        chooser.value = '';
    });
    $('open').onclick = () => chooser.click();
    $('new').onclick = () => view.open(NEW_LABEL, 'utf-8', 'label');
    $('save').onclick = () => keep(new Blob([view.source.bytes]), `${view.name}.zpl`);
    $('undo').onclick = () => editor.undo();
    $('redo').onclick = () => editor.redo();
    $('print').onclick = () => view.print();
    $('png').onclick = () => view.download('png');
    $('pdf').onclick = () => view.download('pdf');
    const desk = $('editor');
    desk.addEventListener('dragover', (event) => event.preventDefault(), true);
    desk.addEventListener('drop', (event) => {
        if (!event.dataTransfer.files.length) return;
        event.preventDefault();
        event.stopPropagation();
        read(event.dataTransfer.files[0]);
    }, true);
}

function wireSettings(view) {
    const set = (name, value) => {
        view.settings[name] = value;
        view.applySettings();
        if (name !== 'unit') view.redraw();
    };
    for (const name of ['dpi', 'size', 'unit']) $(name).addEventListener('change', (event) => set(name, event.target.value.trim()));
    $('previous').onclick = () => view.turnTo(view.page - 1);
    $('next').onclick = () => view.turnTo(view.page + 1);
    $('page').onchange = (event) => view.turnTo(Number(event.target.value));
    $('rotate').onclick = () => view.label.setRotation((view.label.rotation + 90) % 360);
}

function wireZoom(view) {
    const names = [['fit', 'Fit'], ...ZOOMS.map((zoom) => [String(zoom), `${zoom * 100} %`])];
    $('zoom').append(...names.map(([value, name]) => h('option', {value}, name)));
    $('zoom').onchange = (event) => view.setZoom(event.target.value === 'fit' ? 'fit' : Number(event.target.value));
    $('smaller').onclick = () => view.zoomBy(-1);
    $('larger').onclick = () => view.zoomBy(1);
}

function wireKeys(view) {
    const arrows = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]};
    // As the label is turned on the screen, so are the arrows.
    const turned = ([x, y], degrees) => ({0: [x, y], 90: [y, -x], 180: [-x, -y], 270: [-y, x]}[degrees]);
    const keys = {
        '+': () => view.zoomBy(1), '=': () => view.zoomBy(1), '-': () => view.zoomBy(-1), '0': () => view.setZoom('fit'),
        '1': () => view.setZoom(1), 'r': () => $('rotate').click(), 'Escape': () => view.choose(-1),
        'n': () => view.chooseNext(1), 'p': () => view.chooseNext(-1), 'Delete': () => view.remove(), '?': () => $('keys').showModal(),
        'PageUp': () => view.turnTo(view.page - 1), 'PageDown': () => view.turnTo(view.page + 1),
    };
    $('stage').addEventListener('keydown', (event) => {
        const index = view.label.selected;
        if ((event.ctrlKey || event.metaKey) && event.key === 'z') view.source.editor[event.shiftKey ? 'redo' : 'undo']();
        else if (event.ctrlKey || event.metaKey || event.altKey) return;
        else if (arrows[event.key] && index >= 0) {
            const [x, y] = turned(arrows[event.key], view.label.rotation);
            const times = event.shiftKey ? 10 : 1;
            view.mover.step(index, x * times, y * times);
        } else if (keys[event.key]) keys[event.key]();
        else return;
        event.preventDefault();
    });
    $('keys-open').onclick = () => $('keys').showModal();
    $('keys-close').onclick = () => $('keys').close();
    document.addEventListener('keydown', (event) => {
        if (event.key !== 'Enter' || !event.ctrlKey || $('editor').hidden || $('print').hidden) return;
        event.preventDefault();
        view.print();
    }, true);
}

function wirePanes() {
    const buttons = document.querySelectorAll('.panes button');
    for (const button of buttons) {
        button.onclick = () => {
            $('editor').dataset.pane = button.dataset.pane;
            buttons.forEach((one) => one.setAttribute('aria-pressed', one === button));
        };
    }
}

/// The line between stream and label, by the pointer and by the arrow keys.
function wireDivider() {
    const divider = $('divider');
    const set = (share) => {
        const bounded = Math.min(Math.max(share, 20), 75);
        $('editor').style.setProperty('--share', `${bounded}%`);
        divider.setAttribute('aria-valuenow', Math.round(bounded));
        memory.set('share', bounded);
    };
    set(memory.get('share', 42));
    divider.addEventListener('pointerdown', (event) => divider.setPointerCapture(event.pointerId));
    divider.addEventListener('pointermove', (event) => {
        if (divider.hasPointerCapture(event.pointerId)) set(100 * event.clientX / innerWidth);
    });
    divider.addEventListener('keydown', (event) => {
        const step = {ArrowLeft: -2, ArrowRight: 2}[event.key];
        if (step) set(Number(divider.getAttribute('aria-valuenow')) + step);
    });
}
