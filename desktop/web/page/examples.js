/// Labels to begin with.
import {$, h, say} from './dom.js';
import * as doors from './doors.js';

const EXAMPLES = [
    {name: 'shipping-label', title: 'Parcel', about: 'Address, service, route and tracking code', dpi: 203, size: '4x6in'},
    {name: 'product-label', title: 'Product', about: 'Price and retail number', dpi: 203, size: '2x1in'},
    {name: 'warehouse-shelf', title: 'Shelf', about: 'Large type, turned text, round corners', dpi: 203, size: '4x2in'},
    {name: 'pharmacy-label', title: 'Pharmacy', about: 'Small type in a justified block', dpi: 300, size: '60x35mm'},
    {name: 'inventory-batch', title: 'Batch', about: 'Three labels in one stream, some printed several times', dpi: 203, size: '3x1in'},
    {name: 'stored-format', title: 'Badges', about: 'A format stored once, recalled with other data', dpi: 203, size: '3x2in'},
    {name: 'barcodes', title: 'Barcodes', about: 'One symbol of each barcode command', dpi: 203, size: '1200x1500dots'},
];

export class Examples {
    constructor(open) {
        this.open = open;
    }

    enter() {
        if (this.isFilled) return;
        this.isFilled = true;
        $('cards').replaceChildren(...EXAMPLES.map((example) => this.card(example)));
    }

    card(example) {
        const picture = h('img', {alt: '', loading: 'lazy'});
        const {name, dpi, size} = example;
        const stream = doors.readExample(name);
        stream.then((bytes) => doors.drawFile(bytes, {dpi, size, page: 1, format: 'png'}))
            .then((blob) => { picture.src = URL.createObjectURL(blob); }, (error) => { picture.alt = error.message; });
        const press = async () => {
            try {
                this.open(await stream, name, {dpi, size});
            } catch (error) {
                say(error.message, true);
            }
        };
        return h('button', {class: 'card', onclick: press}, h('span', {class: 'thumb'}, picture), h('b', {}, example.title),
            h('span', {class: 'quiet'}, example.about), h('span', {class: 'quiet small'}, `${size.replace('x', ' × ').replace(/([0-9])([a-z])/, '$1 $2')}, ${dpi} dpi`));
    }
}
