/// Which field a person means who points at the label.
import {boxOf} from './label.js';

/// These are seen through: only their ink counts.
const HOLLOW = new Set(['box', 'circle', 'ellipse', 'diagonal']);

/// The index of the smallest field at a place of the page, or -1.
export function hit(label, at) {
    const reach = Math.max(3 / label.scale(), 0.5);
    let best = -1;
    let bestArea = Infinity;
    label.fields.forEach((field, index) => {
        const box = boxOf(field, label.pixelsPerDot);
        if (!box || !isNear(box, at, reach)) return;
        const area = box.width * box.height;
        if (area > bestArea || (HOLLOW.has(field.kind) && !field.white && !hasInk(label, at, reach))) return;
        best = index;
        bestArea = area;
    });
    return best;
}

const isNear = (box, at, reach) => at.x >= box.left - reach && at.x <= box.left + box.width + reach &&
    at.y >= box.top - reach && at.y <= box.top + box.height + reach;

function hasInk(label, at, reach) {
    const size = Math.max(1, Math.ceil(2 * reach));
    const {data} = label.ink.getImageData(Math.floor(at.x - reach), Math.floor(at.y - reach), size, size);
    for (let i = 0; i < data.length; i += 4) if (data[i + 3] > 0 && data[i] < 128) return true;
    return false;
}
