import QtQuick
import QtTest
import Tolmi

TestCase {
    name: "Motion"

    function test_springs_data() {
        return [
            { tag: "overlayState", spring: 3.272, damping: 0.3141 },
            { tag: "overlayLevel", spring: 4.106, damping: 0.3684 },
            { tag: "orbLevel", spring: 4.079, damping: 0.3775 },
            { tag: "buttonPress", spring: 5.382, damping: 0.415 }
        ];
    }
    function test_springs(data) {
        fuzzyCompare(Motion[data.tag].spring, data.spring, 0.001);
        fuzzyCompare(Motion[data.tag].damping, data.damping, 0.0001);
    }

    function test_overshootOfASpring_data() {
        return [{ tag: "0.75", fraction: 0.75 }, { tag: "0.8", fraction: 0.8 }, { tag: "0.825", fraction: 0.825 }];
    }
    // A spring of damping fraction z overshoots by exp(-pi z / sqrt(1 - z z)).
    function test_overshootOfASpring(data) {
        const motion = Motion.spring(0.4, data.fraction);
        let place = 0, speed = 0, highest = 0;
        for (let step = 0; step < 200; ++step) {
            speed += motion.spring * (1 - place) - motion.damping * speed;
            place += 0.016 * speed;
            highest = Math.max(highest, place);
        }
        const z = data.fraction;
        fuzzyCompare(highest - 1, Math.exp(-Math.PI * z / Math.sqrt(1 - z * z)), 0.002);
        fuzzyCompare(place, 1, 1e-6);
    }
}
