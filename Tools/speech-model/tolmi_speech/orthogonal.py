"""An optimiser with orthogonalised updates for matrices, which learns faster than per-parameter learning rates."""

import torch

# Coefficients of a polynomial iteration that moves singular values from 0...1 close to 1 in a few steps.
A, B, C = 3.4445, -4.7750, 2.0315
ROUNDS = 5


def orthogonalized(matrix):
    """The matrix with all singular values moved close to one."""
    is_tall = matrix.shape[0] > matrix.shape[1]
    values = matrix.t() if is_tall else matrix
    values = values / (values.norm() + 1e-7)
    for _ in range(ROUNDS):
        square = values @ values.t()
        values = A * values + (B * square + C * square @ square) @ values
    return values.t() if is_tall else values


class Muon(torch.optim.Optimizer):
    """Orthogonalised momentum. For hidden-layer matrices; not for embeddings, normalisations and biases."""

    def __init__(self, parameters, lr, momentum=0.95, weight_decay=0.0):
        super().__init__(parameters, {"lr": lr, "momentum": momentum, "weight_decay": weight_decay})

    @torch.no_grad()
    def step(self):
        for group in self.param_groups:
            for parameter in group["params"]:
                if parameter.grad is not None:
                    self._move(parameter, group)

    def _move(self, parameter, group):
        state = self.state[parameter]
        if "momentum" not in state:
            state["momentum"] = torch.zeros_like(parameter)
        held = state["momentum"]
        held.mul_(group["momentum"]).add_(parameter.grad)
        ahead = (parameter.grad + group["momentum"] * held).flatten(1)
        step = orthogonalized(ahead) * max(1.0, ahead.shape[0] / ahead.shape[1]) ** 0.5
        parameter.mul_(1 - group["lr"] * group["weight_decay"])
        parameter.add_(step.view_as(parameter), alpha=-group["lr"])
