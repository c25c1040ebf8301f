# Writes adjusted_p.csv beside it: Rscript make_adjusted_p.R > adjusted_p.csv
set.seed(1)
cases <- list(
  list(p = c(0.01, 0.02, 0.03, 0.04, 0.05)),
  list(p = c(0.04, 0.001, 0.5, 0.001, 0.2, 0.04)),
  list(p = c(NaN, 0.01, NaN, 0.04, 0.03)),
  list(p = c(0.01, 0.04, 0.03), n = 30),
  list(p = c(0.3, NaN, 0.0002, 0.03), n = 12),
  list(p = 0.2),
  list(p = 0.2, n = 4),
  list(p = c(0, 1, 0.5, 1e-300)),
  list(p = c(1, 1, 1)),
  list(p = c(NaN, NaN)),
  list(p = runif(40)^3),
  list(p = round(runif(40), 1), n = 100)
)
cat("# make_adjusted_p.R,", R.version.string, "\n")
cat("case,family,p,holm,bh\n")
for (i in seq_along(cases)) {
  p <- cases[[i]]$p
  n <- cases[[i]]$n
  size <- if (is.null(n)) sum(!is.nan(p)) else n
  holm <- p.adjust(p, "holm", size)
  bh <- p.adjust(p, "BH", size)
  cat(sprintf("%d,%d,%.17g,%.17g,%.17g\n", i, if (is.null(n)) 0L else as.integer(n), p, holm, bh), sep = "")
}
