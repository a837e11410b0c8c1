"""Moves the head that ParaView's server draws a wall for, while the session runs.

In ParaView: Tools > Python Shell > Run Script, then in the shell:

    set_head(500, 0, 0)              # 500 mm to the right of the origin of the configuration
    set_head(0, 150, -300, view)     # of another view than the active one
    set_head(0, 0, 0)                # back to where sessions begin

From pvpython: exec(open("head-position.py").read()), or load it with importlib. Millimetres of the configuration, x to the
right, y up, and the viewer looks along -z. The distance of the eyes comes from the session's file.
"""


def set_head(x, y, z, view=None):
    """Draws the view again as it is seen from this point between the eyes."""
    from paraview import simple

    view = view or simple.GetActiveView()
    if view is None:
        raise RuntimeError("there is no view; make one that shows something, then move the head")
    # The camera's place in the data stays; the property is not among the attributes of views in Python.
    matrix = view.SMProxy.GetProperty("EyeTransformMatrix")
    if matrix is None:
        raise RuntimeError("this view is no render view")
    values = [1.0, 0.0, 0.0, 0.001 * x,
              0.0, 1.0, 0.0, 0.001 * y,
              0.0, 0.0, 1.0, 0.001 * z,
              0.0, 0.0, 0.0, 1.0]
    for i, value in enumerate(values):
        matrix.SetElement(i, value)
    view.SMProxy.UpdateVTKObjects()
    simple.Render(view)
