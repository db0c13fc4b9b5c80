import QtQuick

/// Loads a view together with its model, which goes when this goes. Without a model there is no view.
Loader {
    id: loader

    /// The file of the view, which takes `model` and `texts`.
    required property url view
    /// makeModel(owner) makes the model, or nothing.
    required property var makeModel
    required property var texts

    focus: true
    Component.onCompleted: {
        const model = makeModel(loader);
        if (model)
            setSource(view, { model: model, texts: texts });
    }
}
