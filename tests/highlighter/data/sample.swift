import Foundation

/// Keeps the harbour's berths and who lies in them.
/* Times are seconds since midnight, lengths are metres. */
final class Harbour {
    struct Berth: Equatable {
        let number: Int
        let length: Double
        var vessel: String?
    }

    enum Failure: Error {
        case full(waiting: Int), tooLong(Double), unknown
    }

    private var berths: [Berth] = []
    private lazy var formatter = NumberFormatter()
    weak var observer: HarbourObserver?
    static let tariff = 12.75
    fileprivate let home = "https://harbour.example/berths?free=1"

    init(lengths: [Double]) {
        for (index, length) in lengths.enumerated() {
            berths.append(Berth(number: index + 1, length: length, vessel: nil))
        }
    }

    deinit { print("closed: \(berths.count) berths") }

    func moor(_ vessel: String, length: Double) async throws -> Berth {
        guard length > 0 else { throw Failure.unknown }
        // The smallest that fits, so that long ones stay free; it's what the master wants.
        let fitting = berths.indices.filter { berths[$0].vessel == nil && berths[$0].length >= length }
        guard let best = fitting.min(by: { berths[$0].length < berths[$1].length }) else {
            throw berths.allSatisfy { $0.length < length } ? Failure.tooLong(length) : Failure.full(waiting: 3)
        }
        berths[best].vessel = vessel
        try await observer?.harbour(self, didMoor: vessel, at: best + 1)
        return berths[best]
    }

    internal func fee(for vessel: String, nights: Int) -> Double {
        var total = 0.0
        switch nights {
        case 0: return 0
        case 1...6: total = Self.tariff * Double(nights)
        default: total = Self.tariff * Double(nights) * 0.9e0
        }
        let surcharge = vessel.hasPrefix("MS \"") ? 1.5e1 : 0x10
        return total + surcharge
    }
}

protocol HarbourObserver: AnyObject {
    func harbour(_ harbour: Harbour, didMoor vessel: String, at berth: Int) async throws
}

extension Harbour where Self: Harbour {
    typealias Log = (String) -> Void

    /* Prints one line a berth /* nested, which ends here: */
    func list(log: Log) {
        for berth in berths {
            let name = berth.vessel ?? "—"
            log("""
                \(berth.number): \(name)
                """)
        }
        while false { do { try? Data(contentsOf: URL(string: home)!) } catch { return } }
    }
}

actor Pilot {
    unowned let harbour: Harbour
    public private(set) var jobs = 1_000
    init(harbour: Harbour) { self.harbour = harbour }
    func größe(é if1: Int) -> Bool { if1 is Int == true }
}
