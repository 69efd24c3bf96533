// The label that an editor works on.
LabelPartOutline {}
