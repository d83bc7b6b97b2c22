import QtQuick

// Something is under way. It stands still for whoever wants no motion.
Symbol {
    id: spinner

    name: "busy"
    size: 15
    color: Theme.secondary

    RotationAnimator on rotation {
        from: 0; to: 360
        duration: 900
        loops: Animation.Infinite
        running: spinner.visible && !Theme.reduceMotion
    }
}
