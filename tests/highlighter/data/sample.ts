import type { Readable } from 'node:stream';
import { createHash } from "crypto";

export interface Parcel {
    readonly id: string;
    weight: number; // grams
    size: [number, number, number];
    fragile?: boolean;
}

type Zone = 'home' | "abroad" | `zone-${number}`;
enum State { Packed = 1, Sent, Delivered = 1 << 4 }

/* Prices of one carrier.
 * "Unknown" zones cost what the dearest does. */
export abstract class Tariff<T extends Parcel = Parcel> implements Iterable<Zone> {
    protected readonly prices = new Map<Zone, number>([['home', 4.5], ["abroad", 12.95]]);
    private static instances = 0;
    public constructor(private carrier: string, protected url = `https://${carrier}.example/api`) {
        Tariff.instances += 1;
    }

    abstract accepts(parcel: T): parcel is T & { fragile: true };

    price(parcel: T, zone: Zone): number | undefined {
        const base = this.prices.get(zone) ?? Math.max(...this.prices.values());
        if (parcel.weight > 31_500 || parcel.size.some(side => side > 120)) return undefined;
        // Volume weight: a cubic metre counts as 200 kg; don't round before the end.
        const volume = parcel.size.reduce((a, b) => a * b, 1) / 5e3;
        const weight = Math.max(parcel.weight / 1000, volume);
        return Math.round((base + weight * 0.35) * 100) / 1e2;
    }

    *[Symbol.iterator](): Iterator<Zone> {
        for (const zone of this.prices.keys()) yield zone;
    }
}

export async function digest(stream: Readable): Promise<string> {
    const hash = createHash('sha256');
    try {
        for await (const chunk of stream) hash.update(chunk as Buffer);
    } catch (failure: unknown) {
        throw failure instanceof Error ? failure : new Error(String(failure));
    } finally {
        stream.destroy();
    }
    return hash.digest("hex");
}

export const label = (parcel: Parcel, state: State = State.Packed): string => {
    switch (state) {
    case State.Sent:
        return `${parcel.id}: on its way`;
    case State.Delivered:
        return 'delivered\n' + "signed for by \"neighbour\"";
    default:
        return parcel.fragile === true ? "fragile" : 'plain';
    }
};

const Row = ({ parcel }: { parcel: Parcel }) => (
    <tr className="parcel" data-id={parcel.id}>
        <td>{label(parcel)}</td>
        <td title='grams'>{parcel.weight.toFixed(1)} g</td>
    </tr>
);
while (typeof Row === 'undefined') { void 0; }
export default Row;
