// The vendors of the published list, which lies in the folder that VXPRIVACY_DATA names.

import {readFileSync} from 'node:fs';
import {join} from 'node:path';

const numbersOf = (vendors) => vendors.map((vendor) => vendor.id).sort((a, b) => a - b);

/// The numbers of all and of those not deleted; undefined where no folder is named.
export function publishedVendors() {
    const data = process.env.VXPRIVACY_DATA;
    if (!data) return undefined;
    const list = JSON.parse(readFileSync(join(data, 'gvl/vendor-list.json')));
    const vendors = Object.values(list.vendors);
    return {
        all: numbersOf(vendors),
        live: numbersOf(vendors.filter((vendor) => !vendor.deletedDate)),
    };
}

/// The list of format 3; undefined where no folder is named.
export function publishedList() {
    const data = process.env.VXPRIVACY_DATA;
    return data && JSON.parse(readFileSync(join(data, 'gvl3/vendor-list.json')));
}
