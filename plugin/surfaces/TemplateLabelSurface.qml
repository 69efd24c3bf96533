// The label that a template is made for.
LabelPartOutline {}
